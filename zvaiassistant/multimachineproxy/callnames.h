#pragma once

namespace tavro::aiassistant {

// The names of the messages between the machines. The order of each table is the order in which a proxy subscribes and
// unsubscribes.

/// Calls: from a client machine to the serving machine.
namespace call {

inline constexpr char generateText[] = "GenerateText"; ///< string: the question
inline constexpr char generateImage[] = "GenerateImage"; ///< PictureGenerateInfo
inline constexpr char downloadPicture[] = "DownloadPicture"; ///< string: the picture's address
inline constexpr char stopGenerate[] = "StopGenerate"; ///< nothing
inline constexpr char activeDeepseek[] = "ActiveDeepseek"; ///< bool
inline constexpr char activeOnlineSearch[] = "ActiveOnlineSearch"; ///< bool
inline constexpr char clearCathe[] = "ClearCathe"; ///< nothing
inline constexpr char clearHistoryRecord[] = "ClearHistoryRecord"; ///< nothing
inline constexpr char updateHeader[] = "UpdateHeader"; ///< list of 3 strings: token, user id, node
inline constexpr char clearHeader[] = "ClearHeader"; ///< nothing
inline constexpr char aiWidgetShow[] = "AiWidgetShow"; ///< nothing

inline constexpr const char *all[] = {generateText,   generateImage,      downloadPicture, stopGenerate,
                                      activeDeepseek, activeOnlineSearch, clearCathe,      clearHistoryRecord,
                                      updateHeader,   clearHeader,        aiWidgetShow};

} // namespace call

/// Completions: from the serving machine to its clients.
namespace completion {

inline constexpr char generateTextFinished[] = "GenerateTextFinished"; ///< TextGeneratedPack
inline constexpr char generateImageFinished[] = "GenerateImageFinished"; ///< PicturedGeneratedPack
inline constexpr char downloadPictureFinished[] = "DownloadPictureFinished"; ///< string: the picture's address
inline constexpr char stopGenerateFinished[] = "StopGenerateFinished"; ///< nothing
inline constexpr char deleteGeneratingItem[] = "DeleteGeneratingItem"; ///< nothing
inline constexpr char activeDeepseekFinished[] = "ActiveDeepseekFinished"; ///< bool
inline constexpr char activeOnlineSearchFinished[] = "ActiveOnlineSearchFinished"; ///< bool
inline constexpr char clearCatheFinished[] = "ClearCatheFinished"; ///< nothing
inline constexpr char clearHistoryRecordFinished[] = "ClearHistoryRecordFinished"; ///< nothing; clients do not listen
inline constexpr char clearHeaderFinished[] = "ClearHeaderFinished"; ///< nothing; clients do not listen
inline constexpr char requestFailed[] = "RequestFailed"; ///< ChatItemBasic
inline constexpr char errorOccured[] = "ErrorOccured"; ///< ChatItemBasic
inline constexpr char requestTimeout[] = "RequestTimeout"; ///< ChatItemBasic

inline constexpr const char *all[] = {generateTextFinished,
                                      generateImageFinished,
                                      downloadPictureFinished,
                                      stopGenerateFinished,
                                      deleteGeneratingItem,
                                      activeDeepseekFinished,
                                      activeOnlineSearchFinished,
                                      clearCatheFinished,
                                      clearHistoryRecordFinished,
                                      clearHeaderFinished,
                                      requestFailed,
                                      errorOccured,
                                      requestTimeout};

} // namespace completion

} // namespace tavro::aiassistant
