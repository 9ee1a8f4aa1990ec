#pragma once

#include "aicontroller/chatrecords.h"

#include <QWidget>

#include <memory>

namespace tavro::aiassistant {

/// The conversation: a scrolling column of chat items with a clear button below. It begins with the welcome item.
///
/// Made and used on the GUI thread only.
class AnswerWidget : public QWidget {
    Q_OBJECT

public:
    explicit AnswerWidget(QWidget *parent = nullptr);
    ~AnswerWidget() override;

    void addQuestionItem(const ChatItemContext &context);

    // The placeholders that stand until the answer comes.
    void addTextGeneratingItem();
    void addImageGeneratingItem();

    // Each takes the place of the placeholder.
    void addAnswerTextItem(const ChatItemContext &context);
    void addAnswerImageItem(const ChatItemContext &context);
    void addErrorItem(const ChatItemContext &context); ///< the error's text is in the context's message

    /// Removes the first picture placeholder and the first text placeholder, where there are any.
    void deleteGeneratingItem();

    /// Leaves nothing but the welcome item, and reports sigClearAllAnswers. Does nothing while a reset runs.
    void reset();

    /// Enables or disables the buttons of all items that are there now.
    void setItemsEnabled(bool enabled);

    /// Stops all typing where it is. Each item with a text reports sigTypingFinished, whether it was typing or not.
    void stop();

    /// Reads the texts anew in the current language. What was asked and answered stays as it is.
    void retranslate();

Q_SIGNALS:
    void sigModifyButtonClicked(const QString &question, QuestionType type, const PictureGenerateInfo &picInfo);
    void sigDownloadButtonClicked(const AIImage &image);
    void sigLookImageButtonClicked(const AIImage &image);
    void sigTryAgainImageButtonClicked(const QString &question, const PictureGenerateInfo &picInfo);
    void sigTryAgainQuestionButtonClicked(const ChatItemContext &context);
    void sigClearAllAnswers(); ///< the items were removed
    void sigTypingFinished(); ///< an answer is there whole, or was stopped
    void sigNeedSetFocus(); ///< the next question can be typed

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::aiassistant
