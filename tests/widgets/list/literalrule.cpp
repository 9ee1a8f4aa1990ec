#include "literalrule.h"

#include <QFontMetrics>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>
#include <cmath>

namespace tavro::testsupport {

namespace {

constexpr int rowWidth = 690;

qreal unwrappedWidth(const QFont &font, const QString &text)
{
    QTextEdit scratch;
    scratch.setFont(font);
    scratch.setLineWrapMode(QTextEdit::NoWrap);
    scratch.setPlainText(text);
    scratch.document()->adjustSize();
    return scratch.document()->size().width();
}

} // namespace

QSize literalSize(const QFont &font, const QString &plainText)
{
    int lines = 0;
    for (const QString &part : plainText.split(u'\n')) {
        const qreal width = unwrappedWidth(font, part);
        lines += width < rowWidth ? 1 : static_cast<int>(std::ceil(width / rowWidth));
    }
    const qreal width = std::min<qreal>(unwrappedWidth(font, plainText), rowWidth);
    return {static_cast<int>(width), lines * QFontMetrics(font).lineSpacing()};
}

QString literalShown(const QString &text, int count, bool cursor)
{
    return text.left(count) + (cursor ? QStringLiteral("|") : QString());
}

LiteralBrowser::LiteralBrowser(QWidget *parent)
    : QTextBrowser(parent)
{
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(0);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void LiteralBrowser::show(const QString &text)
{
    setPlainText(text);
    document()->setTextWidth(rowWidth);
}

void LiteralBrowser::resizeToText()
{
    setFixedSize(literalSize(font(), toPlainText()));
}

void LiteralBrowser::tick(const QString &text, int count, bool cursor)
{
    show(literalShown(text, count, cursor));
    resizeToText();
}

} // namespace tavro::testsupport
