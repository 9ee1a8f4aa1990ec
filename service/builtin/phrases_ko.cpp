#include "builtin/phrases.h"

namespace tavro::assistantservice {

const Phrases koreanPhrases{
    /* .play = */ u"{where}\"{name}\" 재생 중입니다{volume}.",
    /* .playPicture = */ u"{where}생성된 그림을 재생합니다{volume}.",
    /* .stop = */ u"{where}정지합니다.",
    /* .stopEvery = */ u"{where}모든 레이어를 정지합니다.",
    /* .setVolume = */ u"{where}볼륨을 {percent}%로 설정합니다.",
    /* .setVolumeEvery = */ u"{where}모든 레이어의 볼륨을 {percent}%로 설정합니다.",
    /* .mute = */ u"{where}음소거합니다.",
    /* .muteEvery = */ u"{where}모든 레이어를 음소거합니다.",
    /* .where = */ u"{places}: ",
    /* .layer = */ u"레이어 {numbers}",
    /* .layers = */ u"레이어 {numbers}",
    /* .program = */ u"프로그램 {numbers}",
    /* .programs = */ u"프로그램 {numbers}",
    /* .output = */ u"출력 {numbers}",
    /* .outputs = */ u"출력 {numbers}",
    /* .placeSeparator = */ u", ",
    /* .listSeparator = */ u", ",
    /* .lastSeparator = */ u", ",
    /* .atVolume = */ u" (볼륨 {percent}%)",
    /* .muted = */ u" (음소거)",
    /* .sentenceSeparator = */ u" ",
    /* .noMedia = */ u"무엇을 재생할까요? 미디어 라이브러리의 항목 이름을 말씀해 주세요.",
    /* .severalMedia = */ u"\"{phrase}\"에 해당하는 항목이 여러 개 있습니다. 어느 것입니까: {list}?",
    /* .moreMedia = */ u" (외 {count}개)",
    /* .unknownMedia = */ u"미디어 라이브러리에서 \"{phrase}\" 항목을 찾지 못했습니다.",
    /* .similarMedia = */ u" 혹시 이것입니까: {list}?",
    /* .emptyLibrary = */ u"미디어 라이브러리가 비어 있어 재생할 항목이 없습니다.",
    /* .noLayerToStop = */ u"어느 레이어를 정지할까요? 재생 중인 내용을 볼 수 없으니 번호를 말씀해 주세요.",
    /* .noLayerForVolume = */ u"어느 레이어의 볼륨을 설정할까요? 번호를 말씀해 주세요.",
    /* .noVolume = */ u"볼륨을 얼마로 설정할까요? 50%처럼 퍼센트로 말씀해 주세요.",
    /* .relativeVolume = */ u"현재 볼륨을 알 수 없습니다. 50%처럼 새 볼륨을 퍼센트로 말씀해 주세요.",
    /* .wrongVolume = */ u"볼륨은 0에서 100%까지입니다. {phrase}은(는) 설정할 수 없습니다. 아무것도 바꾸지 않았습니다.",
    /* .wrongLayer = */ u"레이어 번호는 1부터 시작합니다. {phrase}번 레이어는 없습니다. 아무것도 바꾸지 않았습니다.",
    /* .wrongProgram = */
    u"프로그램 번호는 1부터 시작합니다. {phrase}번 프로그램은 없습니다. 아무것도 바꾸지 않았습니다.",
    /* .wrongOutput = */ u"출력 번호는 1부터 시작합니다. {phrase}번 출력은 없습니다. 아무것도 바꾸지 않았습니다.",
    /* .unsupported = */
    u"재생, 정지, 볼륨 설정은 할 수 있지만 일시정지나 반복 재생은 할 수 없습니다. 아무것도 바꾸지 않았습니다.",
    /* .timed = */ u"바로 실행할 수만 있고, 시간이나 조건에 맞춰 실행할 수는 없습니다. 아무것도 바꾸지 않았습니다.",
    /* .unclear = */ u"이 요청에서 \"{phrase}\" 부분을 이해하지 못했습니다. 아무것도 바꾸지 않았습니다.",
    /* .negated = */ u"알겠습니다. 아무것도 바꾸지 않습니다.",
    /* .nothingDone = */ u" 나머지는 그때까지 기다리겠습니다.",
    /* .noModel = */ u"이 도우미에는 언어 모델이 설정되어 있지 않아 일반적인 질문에는 답할 수 없습니다.",
    /* .noModelSwitches = */ u" 모델과 웹 검색 스위치는 여기서 작동하지 않습니다.",
    /* .abilities = */
    u" 할 수 있는 일: 미디어 재생(\"레이어 2에서 {example} 재생, 볼륨 50%\"), 레이어 정지(\"레이어 2 정지\"), 볼륨 "
    u"설정(\"레이어 2 볼륨 30%\"), 그림 모드에서 간단한 그림 그리기.",
    /* .picture = */ u"그림 모델 없이 규칙에 따라 그린 그림, 스타일 \"{style}\": {scene}.",
};

} // namespace tavro::assistantservice
