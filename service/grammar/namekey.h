#pragma once

#include <QStringList>

namespace tavro::assistantservice {

/// A name in the form in which names are compared: case, blanks, hyphens, underscores, width and script of Chinese do
/// not count, and numbers in words are digits.
struct NameKey {
    QStringList words;
    /// The words without anything between them.
    QString compact;
};

NameKey nameKey(const QString &name);

/// What a sign of a name belongs to. Words of a name hold signs of one class.
enum class SignClass { None, Digit, Han, Letter };

SignClass signClassOf(QChar c);

} // namespace tavro::assistantservice
