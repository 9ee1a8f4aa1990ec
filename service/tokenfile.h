#pragma once

#include <QByteArray>
#include <QString>

namespace tavro::assistantservice {

/// Why a client could not send this token in a header, to go on from its name: "is empty". An empty text where it can.
QString whyNoToken(const QByteArray &token);

/// A token as a file gives it.
struct KeptToken {
    QByteArray token;
    /// It was not there before.
    bool isNew = false;
    /// A sentence with what to do; then the rest does not count.
    QString error;
};

/// Reads the token from `path`; where there is no such file a random token is made and the file with it, whole and for
/// its owner alone. A file that other users of the machine can read is refused.
KeptToken readOrMakeToken(const QString &path);

/// What the user is told of a new token, once. `openly`: the text goes to nobody but him, so that it may hold the
/// token.
QString newTokenText(const KeptToken &kept, const QString &path, bool openly);
/// Whether what is written there goes into the system's journal (where its many readers would find a token).
bool isJournal(int descriptor);

} // namespace tavro::assistantservice
