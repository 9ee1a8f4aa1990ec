#include "builtin/phrases.h"

namespace tavro::assistantservice {

const Phrases englishPhrases{
    /* .play = */ u"Playing {name}{where}{volume}.",
    /* .playPicture = */ u"Playing the generated picture{where}{volume}.",
    /* .stop = */ u"Stopping {places}.",
    /* .stopEvery = */ u"Stopping every layer{where}.",
    /* .setVolume = */ u"Setting the volume of {places} to {percent} %.",
    /* .setVolumeEvery = */ u"Setting the volume of every layer{where} to {percent} %.",
    /* .mute = */ u"Muting {places}.",
    /* .muteEvery = */ u"Muting every layer{where}.",
    /* .where = */ u" on {places}",
    /* .layer = */ u"layer {numbers}",
    /* .layers = */ u"layers {numbers}",
    /* .program = */ u"program {numbers}",
    /* .programs = */ u"programs {numbers}",
    /* .output = */ u"output {numbers}",
    /* .outputs = */ u"outputs {numbers}",
    /* .placeSeparator = */ u", ",
    /* .listSeparator = */ u", ",
    /* .lastSeparator = */ u" and ",
    /* .atVolume = */ u" at {percent} % volume",
    /* .muted = */ u" without sound",
    /* .sentenceSeparator = */ u" ",
    /* .noMedia = */ u"What shall I play? Please name an item of the media library.",
    /* .severalMedia = */ u"Several items fit \"{phrase}\". Which one do you mean: {list}?",
    /* .moreMedia = */ u" (and {count} more)",
    /* .unknownMedia = */ u"I found nothing named \"{phrase}\" in the media library.",
    /* .similarMedia = */ u" Did you mean: {list}?",
    /* .emptyLibrary = */ u"The media library is empty, so there is nothing that I could play.",
    /* .noLayerToStop = */ u"Which layer shall I stop? I cannot see what is playing; please say its number.",
    /* .noLayerForVolume = */ u"For which layer shall I set the volume? Please say its number.",
    /* .noVolume = */ u"Which volume shall I set? Please say it in percent, for example 50 %.",
    /* .relativeVolume = */ u"I do not know the present volume. Please say the new one in percent, for example 50 %.",
    /* .wrongVolume = */ u"The volume goes from 0 to 100 %; {phrase} is not possible. Nothing was changed.",
    /* .wrongLayer = */ u"Layers are counted 1, 2, 3 and so on; there is no layer {phrase}. Nothing was changed.",
    /* .wrongProgram = */ u"Programs are counted 1, 2, 3 and so on; there is no program {phrase}. Nothing was changed.",
    /* .wrongOutput = */ u"Outputs are counted 1, 2, 3 and so on; there is no output {phrase}. Nothing was changed.",
    /* .unsupported = */ u"I can play, stop and set a volume, but not pause, resume or loop. Nothing was changed.",
    /* .timed = */ u"I can only act at once, not at a time or under a condition. Nothing was changed.",
    /* .unclear = */ u"I do not understand \"{phrase}\" in this. Nothing was changed.",
    /* .negated = */ u"All right, I leave everything as it is.",
    /* .nothingDone = */ u" I wait with the rest until then.",
    /* .noModel = */ u"No language model is configured for this assistant, so I cannot answer general questions.",
    /* .noModelSwitches = */ u" The model and web search switches have no effect here.",
    /* .abilities = */
    u" What I can do: play items of the media library (\"play {example} on layer 2 at 50 %\"), stop a layer (\"stop "
    u"layer 2\"), set a volume (\"set layer 2 to 30 %\") and draw simple pictures in the picture mode.",
    /* .picture = */ u"A drawing made by rules, without a picture model, in the style \"{style}\": {scene}.",
};

} // namespace tavro::assistantservice
