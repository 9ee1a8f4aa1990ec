#pragma once

#include "grammar/language.h"

namespace tavro::assistantservice {

/// The sentences of one language. Words in braces are replaced; {where} and {volume} bring their own
/// blanks; {places} is {where} without its preposition.
struct Phrases {
    const char16_t *play;
    const char16_t *playPicture;
    const char16_t *stop;
    const char16_t *stopEvery;
    const char16_t *setVolume;
    const char16_t *setVolumeEvery;
    const char16_t *mute;
    const char16_t *muteEvery;

    const char16_t *where;
    const char16_t *layer;
    const char16_t *layers;
    const char16_t *program;
    const char16_t *programs;
    const char16_t *output;
    const char16_t *outputs;
    const char16_t *placeSeparator;
    const char16_t *listSeparator;
    const char16_t *lastSeparator;
    const char16_t *atVolume;
    const char16_t *muted;
    const char16_t *sentenceSeparator;

    const char16_t *noMedia;
    const char16_t *severalMedia;
    const char16_t *moreMedia;
    const char16_t *unknownMedia;
    const char16_t *similarMedia;
    const char16_t *emptyLibrary;
    const char16_t *noLayerToStop;
    const char16_t *noLayerForVolume;
    const char16_t *noVolume;
    const char16_t *relativeVolume;
    const char16_t *wrongVolume;
    const char16_t *wrongLayer;
    const char16_t *wrongProgram;
    const char16_t *wrongOutput;
    const char16_t *unsupported;
    const char16_t *timed;
    const char16_t *unclear;
    const char16_t *negated;
    const char16_t *nothingDone;

    const char16_t *noModel;
    const char16_t *noModelSwitches;
    const char16_t *abilities;

    const char16_t *picture;
};

const Phrases &phrasesFor(Language language);

extern const Phrases englishPhrases;
extern const Phrases simplifiedChinesePhrases;
extern const Phrases traditionalChinesePhrases;
extern const Phrases koreanPhrases;
extern const Phrases russianPhrases;

} // namespace tavro::assistantservice
