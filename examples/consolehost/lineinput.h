#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

namespace tavro::consolehost {

/// Standard input as UTF-8 lines, read in the event loop: nothing ever waits for the user.
class LineInput : public QObject {
    Q_OBJECT

public:
    explicit LineInput(QObject *parent = nullptr);

Q_SIGNALS:
    void sigLine(const QString &line); ///< without its end
    void sigEnded();

private:
    void onReadable();
    void giveLines();
    void giveRest();

    QSocketNotifier m_notifier;
    QByteArray m_unread; ///< the beginning of a line whose end has not come yet
};

} // namespace tavro::consolehost
