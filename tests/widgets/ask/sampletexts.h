#pragma once

#include <vector>

namespace tavro::testsupport {

/// What is asked and answered in the pictures of the panel, in one of the panel's languages.
struct SampleTexts {
    const char *language; ///< its name for the translator
    const char *question;
    const char *answer;
    const char *otherQuestion;
    const char *longAnswer; ///< to the other question, of several paragraphs
    const char *picture; ///< what is to be drawn
    const char *serviceError;
};

/// One for each language, English first.
const std::vector<SampleTexts> &sampleTexts();

} // namespace tavro::testsupport
