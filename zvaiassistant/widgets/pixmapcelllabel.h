#pragma once

#include "aicontroller/chatrecords.h"

#include <QString>
#include <QWidget>

class QFrame;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace tavro::aiassistant {

/// One thumbnail, with a small bar of buttons that shows while the mouse or the keyboard is on it.
class PixmapCellLabel : public QWidget {
    Q_OBJECT

public:
    PixmapCellLabel(const QString &question, const PictureGenerateInfo &picInfo, const AIImage &image,
                    QWidget *parent = nullptr);
    ~PixmapCellLabel() override;

    /// Moves the button bar to its place: centred, 10 px above the lower edge. To be called when the cell has its size.
    void placeButtonBar();

    void retranslate();

Q_SIGNALS:
    void sigLookImageButtonClicked(const AIImage &image);
    void sigDownloadButtonClicked(const AIImage &image);
    void sigTryAgainImageButtonClicked(const QString &question, const PictureGenerateInfo &picInfo);

protected:
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildPicture();
    void buildButtonBar();
    QPushButton *addButton(QHBoxLayout *layout, const QString &name);
    void connectButtons();
    bool hasKeyboardFocus() const;
    void showBarWhereNeeded();

    const QString m_question;
    const AIImage m_image;
    const PictureGenerateInfo m_picInfo;
    QLabel *m_picture = nullptr;
    QFrame *m_buttonBar = nullptr;
    QPushButton *m_look = nullptr;
    QPushButton *m_download = nullptr;
    QPushButton *m_tryAgain = nullptr;
};

} // namespace tavro::aiassistant
