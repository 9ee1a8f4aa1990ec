#pragma once

#include "support/logcatcher.h"
#include "ztheme/ztheme.h"

#include <QTemporaryDir>

#include <optional>

/// A fresh folder for the theme files of each test function. An unexpected warning fails the test.
class ThemeFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    /// A theme file with a value of every kind, those that cannot be used too.
    static const char *const smallTheme;

    tavro::testsupport::LogCatcher &log() { return *m_log; }
    QString path(const QString &name = {}) const { return m_folder->filePath(name); }
    void write(const QString &name, const QByteArray &bytes) const;
    void read(ZT::Theme &theme, const QByteArray &bytes) const;

private:
    std::optional<tavro::testsupport::LogCatcher> m_log;
    std::optional<QTemporaryDir> m_folder;
};
