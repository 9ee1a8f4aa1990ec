#include "builtin/phrases.h"

namespace tavro::assistantservice {

const Phrases simplifiedChinesePhrases{
    /* .play = */ u"正在{where}播放“{name}”{volume}。",
    /* .playPicture = */ u"正在{where}播放生成的图片{volume}。",
    /* .stop = */ u"正在停止{where}。",
    /* .stopEvery = */ u"正在停止{where}所有图层。",
    /* .setVolume = */ u"正在将{where}音量设为 {percent}%。",
    /* .setVolumeEvery = */ u"正在将{where}所有图层的音量设为 {percent}%。",
    /* .mute = */ u"正在将{where}静音。",
    /* .muteEvery = */ u"正在将{where}所有图层静音。",
    /* .where = */ u"{places}",
    /* .layer = */ u"第 {numbers} 层",
    /* .layers = */ u"第 {numbers} 层",
    /* .program = */ u"节目 {numbers} ",
    /* .programs = */ u"节目 {numbers} ",
    /* .output = */ u"输出 {numbers} ",
    /* .outputs = */ u"输出 {numbers} ",
    /* .placeSeparator = */ u"的",
    /* .listSeparator = */ u"、",
    /* .lastSeparator = */ u"和",
    /* .atVolume = */ u"，音量 {percent}%",
    /* .muted = */ u"，静音",
    /* .sentenceSeparator = */ u"",
    /* .noMedia = */ u"要播放什么？请说出媒体库中素材的名称。",
    /* .severalMedia = */ u"有多个素材符合“{phrase}”，您指的是哪一个：{list}？",
    /* .moreMedia = */ u"（另有 {count} 个）",
    /* .unknownMedia = */ u"媒体库中没有找到“{phrase}”。",
    /* .similarMedia = */ u"您是指：{list}？",
    /* .emptyLibrary = */ u"媒体库是空的，没有可以播放的素材。",
    /* .noLayerToStop = */ u"要停止哪一层？我看不到正在播放的内容，请说出图层编号。",
    /* .noLayerForVolume = */ u"要设置哪一层的音量？请说出图层编号。",
    /* .noVolume = */ u"要设为多大音量？请用百分比说明，例如 50%。",
    /* .relativeVolume = */ u"我不知道当前的音量。请用百分比说出新的音量，例如 50%。",
    /* .wrongVolume = */ u"音量范围是 0 到 100%，不能设为 {phrase}。没有做任何更改。",
    /* .wrongLayer = */ u"图层从 1 开始编号，没有第 {phrase} 层。没有做任何更改。",
    /* .wrongProgram = */ u"节目从 1 开始编号，没有节目 {phrase}。没有做任何更改。",
    /* .wrongOutput = */ u"输出从 1 开始编号，没有输出 {phrase}。没有做任何更改。",
    /* .unsupported = */ u"我可以播放、停止和设置音量，但不能暂停、继续或循环播放。没有做任何更改。",
    /* .timed = */ u"我只能立即执行，不能定时或按条件执行。没有做任何更改。",
    /* .unclear = */ u"我不明白其中的“{phrase}”。没有做任何更改。",
    /* .negated = */ u"好的，我不做任何更改。",
    /* .nothingDone = */ u"其余操作等您回答后再执行。",
    /* .noModel = */ u"此助手没有配置语言模型，因此无法回答一般性问题。",
    /* .noModelSwitches = */ u"模型和联网搜索开关在这里不起作用。",
    /* .abilities = */
    u"我可以：播放媒体库中的素材（“在第二层播放{example}，音量50%"
    u"”）、停止图层（“停止第二层”）、设置音量（“把第二层的音量设为30%”），以及在图片模式下绘制简单的图片。",
    /* .picture = */ u"按规则绘制的图画（没有使用图像模型），风格为“{style}”：{scene}。",
};

} // namespace tavro::assistantservice
