#pragma once

#include <QString>

#include <string>

namespace tavro::aiassistant {

// Texts from outside as a log may have them: on one line, with nothing that turns or hides what is beside it.

/// @p text with line breaks, other control characters and those that change the direction of writing written out as
/// "\n" or "\u202e".
QString loggable(const QString &text);
std::string loggable(const std::string &text); ///< UTF-8

/// The same for an address, without the user and password in it, and of at most 4,096 characters.
QString loggableAddress(const QString &address);
std::string loggableAddress(const std::string &address); ///< UTF-8

/// @p text without user and password in the addresses that stand in it.
QString withoutCredentials(QString text);

} // namespace tavro::aiassistant
