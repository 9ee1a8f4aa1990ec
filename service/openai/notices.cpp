#include "openai/notices.h"

namespace tavro::assistantservice {

namespace {

// In braces: what the model wanted to do, and a word that asks for it.
struct NoticeTexts {
    const char16_t *cut;
    const char16_t *withheld;
    const char16_t *forgotten;
    const char16_t *callAsText;
    const char16_t *shortened;
    const char16_t *unasked;
    const char16_t *play;
    const char16_t *stop;
    const char16_t *setVolume;
    const char16_t *everyLayer;
};

constexpr NoticeTexts english{
    u"(The answer reached the model's limit and is cut off. Nothing was carried out.)",
    u"The model's server held the answer back because of its content.",
    u"(The conversation had become too long for the model; its beginning was left out.)",
    u"The model writes its tool calls as text instead of making them, so nothing was carried out. Please use another "
    u"model or chat template, or start the service with --tools off.",
    u"(The answer is longer than is shown; its end is left out.)",
    u"The model wanted to do this: {deed} Your message does not ask for it, so nothing was carried out. If you want "
    u"it, "
    u"please say so with a word such as \"{word}\".",
    u"play",
    u"stop",
    u"volume",
    u"all layers",
};
constexpr NoticeTexts simplifiedChinese{
    u"（回答达到模型的长度上限，已被截断，没有执行任何操作。）",
    u"模型服务器因内容原因没有给出回答。",
    u"（对话对模型来说太长，开头部分已被省略。）",
    u"模型把工具调用写成了文本而没有真正调用，因此没有执行任何操作。请换用其他模型或对话模板，或以 --tools off "
    u"启动服务。",
    u"（回答过长，结尾部分未显示。）",
    u"模型想执行：{deed}您的消息没有提出这一要求，因此没有执行任何操作。如需执行，请用“{word}”之类的词说明。",
    u"播放",
    u"停止",
    u"音量",
    u"所有图层",
};
constexpr NoticeTexts traditionalChinese{
    u"（回答達到模型的長度上限，已被截斷，沒有執行任何操作。）",
    u"模型伺服器因內容原因沒有給出回答。",
    u"（對話對模型來說太長，開頭部分已被省略。）",
    u"模型把工具呼叫寫成了文字而沒有真正呼叫，因此沒有執行任何操作。請改用其他模型或對話範本，或以 --tools off "
    u"啟動服務。",
    u"（回答過長，結尾部分未顯示。）",
    u"模型想執行：{deed}您的訊息沒有提出這項要求，因此沒有執行任何操作。如需執行，請用「{word}」之類的詞說明。",
    u"播放",
    u"停止",
    u"音量",
    u"所有層",
};
constexpr NoticeTexts korean{
    u"(답변이 모델의 길이 제한에 도달하여 잘렸습니다. 아무것도 실행되지 않았습니다.)",
    u"모델 서버가 내용을 이유로 답변을 보내지 않았습니다.",
    u"(대화가 모델에 비해 너무 길어 앞부분을 제외했습니다.)",
    u"모델이 도구를 호출하지 않고 호출을 텍스트로 적어서 아무것도 실행되지 않았습니다. 다른 모델이나 대화 템플릿을 "
    u"쓰거나 --tools off로 서비스를 시작해 주세요.",
    u"(답변이 너무 길어 끝부분은 표시하지 않았습니다.)",
    u"모델이 하려던 일: {deed} 메시지에서 요청하지 않은 일이라 아무것도 실행하지 않았습니다. 원하시면 \"{word}\" 같은 "
    u"말로 말씀해 주세요.",
    u"재생",
    u"정지",
    u"볼륨",
    u"모든 레이어",
};
constexpr NoticeTexts russian{
    u"(Ответ достиг предела длины модели и обрезан. Ничего не выполнено.)",
    u"Сервер модели не выдал ответ из-за его содержания.",
    u"(Разговор слишком длинный для модели, его начало опущено.)",
    u"Модель пишет вызовы инструментов текстом вместо того, чтобы делать их, поэтому ничего не выполнено. Нужна другая "
    u"модель или другой шаблон чата, либо запуск службы с --tools off.",
    u"(Ответ длиннее, чем показано; его конец опущен.)",
    u"Модель хотела сделать следующее: {deed} В вашем сообщении об этом не просят, поэтому ничего не выполнено. Если "
    u"это "
    u"нужно, скажите об этом, например словом «{word}».",
    u"воспроизведи",
    u"останови",
    u"громкость",
    u"все слои",
};

const NoticeTexts &textsFor(Language language)
{
    switch (language) {
    case Language::ChineseSimplified:
        return simplifiedChinese;
    case Language::ChineseTraditional:
        return traditionalChinese;
    case Language::Korean:
        return korean;
    case Language::Russian:
        return russian;
    case Language::English:
        break;
    }
    return english;
}

const char16_t *wordFor(const Intent &intent, const NoticeTexts &texts)
{
    if (intent.everyLayer) {
        return texts.everyLayer;
    }
    switch (intent.action) {
    case Intent::Action::Play:
        return texts.play;
    case Intent::Action::Stop:
        return texts.stop;
    case Intent::Action::SetVolume:
        break;
    }
    return texts.setVolume;
}

} // namespace

QString noticeText(Notice notice, Language language)
{
    const NoticeTexts &texts = textsFor(language);
    switch (notice) {
    case Notice::Cut:
        return QString::fromUtf16(texts.cut);
    case Notice::Withheld:
        return QString::fromUtf16(texts.withheld);
    case Notice::CallAsText:
        return QString::fromUtf16(texts.callAsText);
    case Notice::Shortened:
        return QString::fromUtf16(texts.shortened);
    case Notice::Forgotten:
        break;
    }
    return QString::fromUtf16(texts.forgotten);
}

QString unaskedText(const QString &deed, const Intent &intent, Language language)
{
    const NoticeTexts &texts = textsFor(language);
    QString text = QString::fromUtf16(texts.unasked);
    text.replace(QLatin1String("{word}"), QString::fromUtf16(wordFor(intent, texts)));
    return text.replace(QLatin1String("{deed}"), deed);
}

} // namespace tavro::assistantservice
