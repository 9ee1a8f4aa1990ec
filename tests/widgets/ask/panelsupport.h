#pragma once

#include <QMetaMethod>
#include <QMetaObject>
#include <QString>
#include <QStringList>

class QWidget;

namespace tavro::testsupport {

class LogCatcher;

/// What was logged and must not be, one complaint a line, without the noise of the platform that tests run on.
QString complaintsOf(const LogCatcher &log);

/// Loads the module's own texts (once) and makes @p language the current one; "" is a language without texts.
void useLanguage(const QString &language);

/// The module's sheets with the values of the default theme.
QString defaultStyleSheet();

/// The methods of one kind that @p meta itself declares, in their order: "name(types) names".
QStringList declaredMethods(const QMetaObject &meta, QMetaMethod::MethodType type);

/// The widget's place in the coordinates of @p ancestor.
QRect placeIn(const QWidget *ancestor, const QWidget *widget);

} // namespace tavro::testsupport
