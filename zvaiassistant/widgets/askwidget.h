#pragma once

#include "aicontroller/chatrecords.h"

#include <QWidget>

#include <memory>

namespace tavro::aiassistant {

/// Where the user writes: a question, or the description of a picture with its ratio and style. At most 200 characters.
/// GUI thread only.
class AskWidget : public QWidget {
    Q_OBJECT

public:
    explicit AskWidget(QWidget *parent = nullptr);
    ~AskWidget() override;

    /// Lets the user write and choose, with the send button shown; or, while an answer is generated, not, with the stop
    /// button shown in its place. What was chosen stays.
    void setAskAreaEnable(bool enable);

    /// Back to the ask-and-answer mode with nothing written or chosen. Toggles that were on report that they are off.
    void reset();

    /// Restores the mode of a question, and the style of a picture request as tryAgainPicture() does. With @p modify
    /// its text comes back for editing. A question of another type leaves the mode as it is.
    void setQuestion(const QString &question, QuestionType type, const PictureGenerateInfo &picInfo, bool modify);

    /// Puts a picture request back for the user to send: mode and text. The style follows only where it is the first
    /// one of the list.
    void tryAgainPicture(const QString &question, const PictureGenerateInfo &picInfo);

    void focusEdit();
    void retranslate();

Q_SIGNALS:
    void sigSendToGenerateText(const QString &text);
    void sigSendToGenrateImage(const PictureGenerateInfo &info);
    void sigStopToGenerate();
    void sigActiveDeepSeekModel(bool bActive);
    void sigActiverOnlineSearch(bool bActive);
    void sigRequestTimeout(); ///< spare: not emitted

private:
    class Private;
    std::unique_ptr<Private> d;
    friend struct AskWidgetAccess;
};

} // namespace tavro::aiassistant
