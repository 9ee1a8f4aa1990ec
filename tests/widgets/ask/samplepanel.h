#pragma once

#include "aicontroller/aicontroller.h"
#include "panelsupport.h"
#include "sampletexts.h"
#include "widgets/pictureviewerwidget.h"

#include <QImage>
#include <QWidget>

#include <memory>

namespace tavro::aiassistant {
class AnswerWidget;
class AskWidget;
class MainWidget;
} // namespace tavro::aiassistant

namespace tavro::testsupport {

/// A picture of hills and a sun at 1920 x 1080, as an answer brings it.
aiassistant::AIImage samplePicture(const QColor &sky);

/// A panel in a host's dark window, in the default theme and one language, with nothing asked yet. No service is there:
/// what a controller would report is handed in.
class SamplePanel {
public:
    explicit SamplePanel(const SampleTexts &sampleTexts);
    ~SamplePanel();

    template <typename Widget = QWidget>
    Widget *child(const char *name) const
    {
        return m_host.findChild<Widget *>(QLatin1String(name));
    }
    /// Of several with that name, the last of the conversation.
    template <typename Widget = QWidget>
    Widget *lastChild(const char *name) const
    {
        return m_host.findChildren<Widget *>(QLatin1String(name)).last();
    }

    aiassistant::MainWidget &panel() const { return *m_panel; }
    aiassistant::AskWidget &ask() const;
    aiassistant::AnswerWidget &answers() const;
    QWidget &window() { return m_viewer ? static_cast<QWidget &>(*m_viewer) : m_host; }

    aiassistant::ChatItemContext textQuestion(const char *question) const;
    aiassistant::ChatItemContext pictureQuestion() const;

    void askQuestion(const char *question); ///< and wait for the answer
    void askForPicture();
    void showAnswer(const char *answer); ///< whole, without the typing
    void showPictures(int count);
    void finishTyping(); ///< shows the last answer whole

    /// Opens a viewer of that size with @p image.
    void openViewer(const aiassistant::AIImage &image, const QSize &size);

    /// What the user sees: the window with its open list, laid out and painted.
    QImage picture();

    const SampleTexts &texts;

private:
    aiassistant::AiController m_controller;
    QWidget m_host;
    aiassistant::MainWidget *m_panel;
    std::unique_ptr<aiassistant::PictureViewerWidget> m_viewer;
};

} // namespace tavro::testsupport
