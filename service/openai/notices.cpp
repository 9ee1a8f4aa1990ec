#include "openai/notices.h"

namespace tavro::assistantservice {

namespace {

struct NoticeTexts {
    const char16_t *cut;
    const char16_t *withheld;
    const char16_t *forgotten;
    const char16_t *callAsText;
    const char16_t *shortened;
};

constexpr NoticeTexts english{
    u"(The answer reached the model's limit and is cut off. Nothing was carried out.)",
    u"The model's server held the answer back because of its content.",
    u"(The conversation had become too long for the model; its beginning was left out.)",
    u"The model writes its tool calls as text instead of making them, so nothing was carried out. Please use another "
    u"model or chat template, or start the service with --tools off.",
    u"(The answer is longer than is shown; its end is left out.)",
};
constexpr NoticeTexts simplifiedChinese{
    u"（回答达到模型的长度上限，已被截断，没有执行任何操作。）",
    u"模型服务器因内容原因没有给出回答。",
    u"（对话对模型来说太长，开头部分已被省略。）",
    u"模型把工具调用写成了文本而没有真正调用，因此没有执行任何操作。请换用其他模型或对话模板，或以 --tools off "
    u"启动服务。",
    u"（回答过长，结尾部分未显示。）",
};
constexpr NoticeTexts traditionalChinese{
    u"（回答達到模型的長度上限，已被截斷，沒有執行任何操作。）",
    u"模型伺服器因內容原因沒有給出回答。",
    u"（對話對模型來說太長，開頭部分已被省略。）",
    u"模型把工具呼叫寫成了文字而沒有真正呼叫，因此沒有執行任何操作。請改用其他模型或對話範本，或以 --tools off "
    u"啟動服務。",
    u"（回答過長，結尾部分未顯示。）",
};
constexpr NoticeTexts korean{
    u"(답변이 모델의 길이 제한에 도달하여 잘렸습니다. 아무것도 실행되지 않았습니다.)",
    u"모델 서버가 내용을 이유로 답변을 보내지 않았습니다.",
    u"(대화가 모델에 비해 너무 길어 앞부분을 제외했습니다.)",
    u"모델이 도구를 호출하지 않고 호출을 텍스트로 적어서 아무것도 실행되지 않았습니다. 다른 모델이나 대화 템플릿을 "
    u"쓰거나 --tools off로 서비스를 시작해 주세요.",
    u"(답변이 너무 길어 끝부분은 표시하지 않았습니다.)",
};
constexpr NoticeTexts russian{
    u"(Ответ достиг предела длины модели и обрезан. Ничего не выполнено.)",
    u"Сервер модели не выдал ответ из-за его содержания.",
    u"(Разговор слишком длинный для модели, его начало опущено.)",
    u"Модель пишет вызовы инструментов текстом вместо того, чтобы делать их, поэтому ничего не выполнено. Нужна другая "
    u"модель или другой шаблон чата, либо запуск службы с --tools off.",
    u"(Ответ длиннее, чем показано; его конец опущен.)",
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

} // namespace tavro::assistantservice
