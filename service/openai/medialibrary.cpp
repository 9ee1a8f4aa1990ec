#include "openai/medialibrary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tavro::assistantservice {

QString libraryBlock(const QVector<ShownItem> &items, int librarySize)
{
    QJsonArray media;
    for (const ShownItem &item : items) {
        media.append(QJsonObject{{QStringLiteral("media_id"), item.id}, {QStringLiteral("media_name"), item.name}});
    }
    const QJsonObject library{{QStringLiteral("media"), media},
                              {QStringLiteral("not_listed"), librarySize - items.size()}};
    QString json = QString::fromUtf8(QJsonDocument(library).toJson(QJsonDocument::Compact));
    // The same in JSON, and no mark of ours or of a chat template.
    json.replace(QLatin1Char('<'), QLatin1String("\\u003c"));
    return QStringLiteral("<media_library>\n") + json + QStringLiteral("\n</media_library>");
}

} // namespace tavro::assistantservice
