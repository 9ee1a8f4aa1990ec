#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace tavro::playout {

/// The text of an INI file, in which single values are changed and all else stays as it is, comments too.
class IniText {
public:
    explicit IniText(const QString &text);

    /// Gives @p name, which stands in no group, the value.
    void set(const QString &name, const QString &value);

    /// Takes @p name out.
    void remove(const QString &name);

    QString text() const;

private:
    std::vector<int> groupless() const;
    std::vector<int> placesOf(const QString &name) const;
    int placeForNew() const;

    QStringList m_lines;
};

/// @p value as Qt reads it from behind the equals sign.
QString iniValue(const QString &value);

} // namespace tavro::playout
