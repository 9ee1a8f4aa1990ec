#pragma once

#include <QByteArray>
#include <QString>

/// One input as a file, for readers that take a path. It goes with the object.
class InputFile {
public:
    /// The name ends with @p suffix and has not been used before in this process: Qt keeps what it has read of an INI
    /// file by the file's path, size and time.
    InputFile(const QByteArray &bytes, const char *suffix);
    ~InputFile();

    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;

    const QString &path() const { return m_path; }

private:
    QString m_path;
};
