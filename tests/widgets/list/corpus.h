#pragma once

#include <QString>

#include <vector>

namespace tavro::testsupport {

struct CorpusText {
    const char *name;
    QString text;
};

/// Texts of every kind that an answer may be of, each short enough to be compared at every character.
std::vector<CorpusText> corpus();

/// An answer of 1,000 lines.
QString thousandLines();

// Answers as they come, in paragraphs, for pictures and measurements.
QString englishAnswer();
QString chineseAnswer();
QString koreanAnswer();
QString russianAnswer();

} // namespace tavro::testsupport
