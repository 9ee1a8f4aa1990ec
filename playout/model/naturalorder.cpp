#include "model/naturalorder.h"

namespace tavro::playout {

namespace {

int skipZeros(const QString &text, int at)
{
    while (at + 1 < text.size() && text.at(at) == QLatin1Char('0') && text.at(at + 1).isDigit())
        ++at;
    return at;
}

int endOfNumber(const QString &text, int at)
{
    while (at < text.size() && text.at(at).isDigit())
        ++at;
    return at;
}

// Compares the numbers at @p left and @p right of any length, and moves behind them.
int compareNumbers(const QString &a, int &left, const QString &b, int &right)
{
    const int leftBegin = skipZeros(a, left);
    const int rightBegin = skipZeros(b, right);
    left = endOfNumber(a, leftBegin);
    right = endOfNumber(b, rightBegin);
    if (left - leftBegin != right - rightBegin)
        return (left - leftBegin) - (right - rightBegin);
    return QString::compare(a.mid(leftBegin, left - leftBegin), b.mid(rightBegin, right - rightBegin));
}

} // namespace

bool naturallyBefore(const QString &left, const QString &right)
{
    const QString a = left.toCaseFolded();
    const QString b = right.toCaseFolded();
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        const bool numbers = a.at(i).isDigit() && b.at(j).isDigit();
        const int order = numbers ? compareNumbers(a, i, b, j) : a.at(i++).unicode() - b.at(j++).unicode();
        if (order != 0)
            return order < 0;
    }
    return a.size() - i < b.size() - j;
}

} // namespace tavro::playout
