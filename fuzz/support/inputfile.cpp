#include "inputfile.h"

#include "checks.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

QString unusedPath(const char *suffix)
{
    static const QTemporaryDir folder;
    static quint64 count = 0;
    return folder.filePath(QString::number(count++) + QLatin1String(suffix));
}

} // namespace

InputFile::InputFile(const QByteArray &bytes, const char *suffix)
    : m_path(unusedPath(suffix))
{
    QFile file(m_path);
    demand(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
}

InputFile::~InputFile()
{
    QFile::remove(m_path);
}
