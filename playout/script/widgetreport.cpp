#include "script/widgetreport.h"

#include "script/widgetsearch.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QWidget>

namespace tavro::playout {

QString reportOn(const QWidget &widget)
{
    const qreal ratio = widget.devicePixelRatioF();
    const QPointF place = QPointF(widget.mapToGlobal(QPoint())) * ratio;
    const QJsonObject report{{QStringLiteral("name"), widget.objectName()},
                             {QStringLiteral("text"), shownText(widget)},
                             {QStringLiteral("enabled"), widget.isEnabled()},
                             {QStringLiteral("x"), qRound(place.x())},
                             {QStringLiteral("y"), qRound(place.y())},
                             {QStringLiteral("width"), qRound(widget.width() * ratio)},
                             {QStringLiteral("height"), qRound(widget.height() * ratio)}};
    return QString::fromUtf8(QJsonDocument(report).toJson(QJsonDocument::Compact));
}

} // namespace tavro::playout
