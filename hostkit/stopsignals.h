#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace tavro::hostkit {

/// SIGINT and SIGTERM as a Qt signal. The second one of a kind ends the program at once. Made once in a program.
class StopSignals : public QObject {
    Q_OBJECT

public:
    StopSignals();
    ~StopSignals() override;

Q_SIGNALS:
    void sigReceived(int number);

private:
    void onReadable();

    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tavro::hostkit
