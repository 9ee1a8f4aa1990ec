#pragma once

#include <QSize>
#include <QString>
#include <QTextBrowser>

namespace tavro::testsupport {

/// The size rule written down literally: every line is laid out in a text edit of its own.
QSize literalSize(const QFont &font, const QString &plainText);

/// The first @p count characters of @p text, with the cursor's mark behind them or without.
QString literalShown(const QString &text, int count, bool cursor);

/// A browser that shows what it is given whole, each time, and sizes itself by the literal rule.
class LiteralBrowser : public QTextBrowser {
public:
    explicit LiteralBrowser(QWidget *parent = nullptr);

    void show(const QString &text);
    void resizeToText();
    void tick(const QString &text, int count, bool cursor);
};

} // namespace tavro::testsupport
