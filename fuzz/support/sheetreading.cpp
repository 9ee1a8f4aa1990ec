#include "sheetreading.h"

#include <QtGui/private/qcssparser_p.h>

int readableRules(const QString &sheet)
{
    QCss::StyleSheet read;
    const bool isWhole = QCss::Parser(sheet).parse(&read);
    return isWhole ? read.styleRules.size() + read.nameIndex.size() : -1;
}
