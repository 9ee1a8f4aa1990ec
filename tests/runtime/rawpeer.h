#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace tavro::testsupport {

/// Something else at the broker, which sends what it likes and hears everything.
class RawPeer {
public:
    struct Heard {
        std::string subject;
        std::string replyTo;
        std::string data;
    };

    explicit RawPeer(const QString &url);
    ~RawPeer();

    bool isConnected() const;
    /// False where it could not be sent, or the broker did not take it.
    bool send(const char *subject, const QByteArray &data, const char *replyTo = nullptr);
    /// What it heard on subjects that begin with @p begin.
    std::vector<Heard> heard(const std::string &begin) const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::testsupport
