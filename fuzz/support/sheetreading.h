#pragma once

#include <QString>

/// How many rules Qt reads of a style sheet; -1 where it stops at some place and drops the rest.
int readableRules(const QString &sheet);
