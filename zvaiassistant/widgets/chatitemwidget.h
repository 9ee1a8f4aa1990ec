#pragma once

#include "aicontroller/chatrecords.h"

#include <QWidget>

#include <cstdint>
#include <memory>

namespace tavro::aiassistant {

/// One item of the conversation: an avatar beside a box with a text or with pictures, and the buttons of its kind. The
/// kinds are in chatitems.h. GUI thread only.
class ChatItemWidget : public QWidget {
    Q_OBJECT

public:
    /// The values are fixed.
    enum class Kind : std::int32_t {
        Hello = 0,
        Question = 1,
        AnswerText = 2,
        AnswerImage = 3,
        TextGenerating = 4,
        ImageGenerating = 5,
    };

    ~ChatItemWidget() override;

    /// The text that all items of @p kind show, in the current language; empty where it comes with each item.
    static QString fixedText(Kind kind);

    /// What the item was made of; a placeholder's or greeting's message is as it was then.
    const ChatItemContext &context() const;

    /// While it lives, changes of the item's controls ask for no painting. For an item that is out of sight: each of
    /// the controls would be checked against all its siblings, only to find that nothing is to be painted.
    class Unpainted {
    public:
        explicit Unpainted(ChatItemWidget &item);
        ~Unpainted();

        Unpainted(const Unpainted &) = delete;
        Unpainted &operator=(const Unpainted &) = delete;

    private:
        ChatItemWidget &m_item;
    };

    void setButtonsEnabled(bool enabled);

    /// Ends the typing where it is; an item with a text then reports sigTypingFinished, whether it was typing or not.
    void stopTyping();

    /// Reads the texts that belong to the item's kind anew, in the current language.
    void retranslate();

Q_SIGNALS:
    void sigModifyButtonClicked(const QString &question, QuestionType type, const PictureGenerateInfo &picInfo);
    void sigTryAgainQuestionButtonClicked(const ChatItemContext &context);
    void sigLookImageButtonClicked(const AIImage &image);
    void sigDownloadButtonClicked(const AIImage &image);
    void sigTryAgainImageButtonClicked(const QString &question, const PictureGenerateInfo &picInfo);
    void sigTypingFinished(); ///< the text is there whole, or was stopped
    void sigTyping(); ///< one more character is there

protected:
    ChatItemWidget(Kind kind, const ChatItemContext &context, QWidget *parent);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::aiassistant
