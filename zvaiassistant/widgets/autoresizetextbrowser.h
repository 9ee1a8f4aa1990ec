#pragma once

#include <QTextBrowser>

#include <functional>
#include <memory>

namespace tavro::aiassistant {

/// A read-only text that is as large as what it shows, at most 690 px wide, and that can type itself out. GUI thread
/// only.
///
/// The size follows each change of the text, or of the font, when control returns to the event loop.
class AutoResizeTextBrowser : public QTextBrowser {
    Q_OBJECT

public:
    using Resizer = std::function<void(const QSize &size)>;

    explicit AutoResizeTextBrowser(QWidget *parent = nullptr);
    ~AutoResizeTextBrowser() override;

    /// Shows @p text whole and at once. Typing ends without a report.
    void showText(const QString &text);

    /// Types @p text, one character every 50 ms. Once stopped, a browser types no more.
    void typeText(const QString &text);

    /// Ends the typing for good: what was shown so far stays. Nothing is reported.
    void stopTyping();

    /// Lets @p resizer take the text's size in place of setFixedSize().
    void setResizer(const Resizer &resizer);

Q_SIGNALS:
    void sigTypingFinished(); ///< the whole text is there; not after stopTyping()
    void sigTyping(); ///< one more character is there

public Q_SLOTS:
    void slotTypeTimeout();
    void slotCursorTimeout();

protected:
    void changeEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    friend class AutoResizeTextBrowserAccess;
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace tavro::aiassistant
