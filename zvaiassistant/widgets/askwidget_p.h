#pragma once

#include "widgets/askwidget.h"

#include <QString>

class QAbstractButton;
class QBoxLayout;
class QButtonGroup;
class QComboBox;
class QFrame;
class QGraphicsOpacityEffect;
class QKeyEvent;
class QLabel;
class QPushButton;
class QTextEdit;

namespace tavro::aiassistant {

class Q_DECL_HIDDEN AskWidget::Private : public QObject {
    Q_OBJECT

public:
    enum Mode { AskAndAnswer = 0, GenerateImage = 1 }; // the ids in the group of mode buttons

    explicit Private(AskWidget *owner);

    void setAreaEnabled(bool enable);
    void showStopButton(bool isGenerating);
    void setMode(Mode mode);
    void applyMode(int mode);
    void letTabReachChosenMode();
    void restoreStyle(const PictureGenerateInfo &info);
    void writeText(const QString &content); ///< with the cursor behind it
    void retranslate();
    void updatePlaceholder();

    AskWidget *const q;
    QPushButton *askAndAnswer = nullptr;
    QPushButton *generateImage = nullptr;
    QButtonGroup *modes = nullptr;
    QFrame *askArea = nullptr;
    QTextEdit *edit = nullptr;
    QPushButton *model = nullptr;
    QPushButton *onlineSearch = nullptr;
    QComboBox *ratio = nullptr;
    QComboBox *style = nullptr;
    QLabel *remainWord = nullptr;
    QFrame *line2 = nullptr;
    QPushButton *send = nullptr;
    QPushButton *stop = nullptr;
    QGraphicsOpacityEffect *sendOpacity = nullptr;

public Q_SLOTS:
    void slotTextEditTextChanged();
    void slotGroupBtnClicked(QAbstractButton *button);
    void slotDealSendMsgBtnClicked();
    void slotDealStopBtnClicked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildModes();
    void buildAskArea();
    void buildEdit();
    void buildOptions();
    void buildSendButtons();
    void layOut();
    QPushButton *makeOption(QWidget *parent, const QString &name, const QString &icon,
                            const QString &checkedIcon) const;
    void layOutAskArea() const;
    QBoxLayout *modeRow() const;
    QBoxLayout *optionRow() const;
    QBoxLayout *sendRow() const;
    void orderFocus() const;
    void connectControls();

    bool handleKey(const QKeyEvent &event);
    void dimPlaceholder();
    void limitLength();
    PictureGenerateInfo pictureRequest(const QString &content) const;
};

/// Gives the private part to tests.
struct AskWidgetAccess {
    static AskWidget::Private &of(AskWidget &widget) { return *widget.d; }
};

} // namespace tavro::aiassistant
