#include "builtin/phrases.h"

namespace tavro::assistantservice {

const Phrases traditionalChinesePhrases{
    /* .play = */ u"正在{where}播放「{name}」{volume}。",
    /* .playPicture = */ u"正在{where}播放產生的圖片{volume}。",
    /* .stop = */ u"正在停止{where}。",
    /* .stopEvery = */ u"正在停止{where}所有圖層。",
    /* .setVolume = */ u"正在將{where}音量設為 {percent}%。",
    /* .setVolumeEvery = */ u"正在將{where}所有圖層的音量設為 {percent}%。",
    /* .mute = */ u"正在將{where}靜音。",
    /* .muteEvery = */ u"正在將{where}所有圖層靜音。",
    /* .where = */ u"{places}",
    /* .layer = */ u"第 {numbers} 層",
    /* .layers = */ u"第 {numbers} 層",
    /* .program = */ u"節目 {numbers} ",
    /* .programs = */ u"節目 {numbers} ",
    /* .output = */ u"輸出 {numbers} ",
    /* .outputs = */ u"輸出 {numbers} ",
    /* .placeSeparator = */ u"的",
    /* .listSeparator = */ u"、",
    /* .lastSeparator = */ u"和",
    /* .atVolume = */ u"，音量 {percent}%",
    /* .muted = */ u"，靜音",
    /* .sentenceSeparator = */ u"",
    /* .noMedia = */ u"要播放什麼？請說出媒體庫中素材的名稱。",
    /* .severalMedia = */ u"有多個素材符合「{phrase}」，您指的是哪一個：{list}？",
    /* .moreMedia = */ u"（另有 {count} 個）",
    /* .unknownMedia = */ u"媒體庫中沒有找到「{phrase}」。",
    /* .similarMedia = */ u"您是指：{list}？",
    /* .emptyLibrary = */ u"媒體庫是空的，沒有可以播放的素材。",
    /* .noLayerToStop = */ u"要停止哪一層？我看不到正在播放的內容，請說出圖層編號。",
    /* .noLayerForVolume = */ u"要設定哪一層的音量？請說出圖層編號。",
    /* .noVolume = */ u"要設為多大音量？請用百分比說明，例如 50%。",
    /* .relativeVolume = */ u"我不知道目前的音量。請用百分比說出新的音量，例如 50%。",
    /* .wrongVolume = */ u"音量範圍是 0 到 100%，不能設為 {phrase}。沒有做任何變更。",
    /* .wrongLayer = */ u"圖層從 1 開始編號，沒有第 {phrase} 層。沒有做任何變更。",
    /* .wrongProgram = */ u"節目從 1 開始編號，沒有節目 {phrase}。沒有做任何變更。",
    /* .wrongOutput = */ u"輸出從 1 開始編號，沒有輸出 {phrase}。沒有做任何變更。",
    /* .unsupported = */ u"我可以播放、停止和設定音量，但不能暫停、繼續或循環播放。沒有做任何變更。",
    /* .timed = */ u"我只能立即執行，不能定時或依條件執行。沒有做任何變更。",
    /* .unclear = */ u"我不明白其中的「{phrase}」。沒有做任何變更。",
    /* .negated = */ u"好的，我不做任何變更。",
    /* .nothingDone = */ u"其餘操作等您回答後再執行。",
    /* .noModel = */ u"此助手沒有設定語言模型，因此無法回答一般性問題。",
    /* .noModelSwitches = */ u"模型和連網搜尋開關在這裡不起作用。",
    /* .abilities = */
    u"我可以：播放媒體庫中的素材（「在第二層播放{example}，音量50%"
    u"」）、停止圖層（「停止第二層」）、設定音量（「把第二層的音量設為30%」），以及在圖片模式下繪製簡單的圖片。",
    /* .picture = */ u"依規則繪製的圖畫（沒有使用圖像模型），風格為「{style}」：{scene}。",
};

} // namespace tavro::assistantservice
