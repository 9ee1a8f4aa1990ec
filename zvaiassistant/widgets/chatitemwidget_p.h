#pragma once

#include "widgets/chatitemwidget.h"

#include <QObject>

class QHBoxLayout;
class QLabel;
class QLayout;
class QPushButton;

namespace tavro::aiassistant {

class AutoResizeTextBrowser;
class PixmapLabel;

/// The item's parts. Those that a kind does not have are null.
class Q_DECL_HIDDEN ChatItemWidget::Private : public QObject {
public:
    Private(ChatItemWidget *owner, Kind itemKind, const ChatItemContext &itemContext);

    void build();
    void retranslate();
    void showText();
    bool hasFixedText() const;
    void setPaintRequests(bool on);

    ChatItemWidget *const q;
    const Kind kind;
    const ChatItemContext context;

    QWidget *rightWidget = nullptr;
    AutoResizeTextBrowser *textBrowser = nullptr;
    QLabel *caption = nullptr;
    PixmapLabel *pictures = nullptr;
    QPushButton *copyButton = nullptr;
    QPushButton *modifyButton = nullptr;
    QPushButton *tryAgainButton = nullptr;

private:
    QLayout *makeAvatarColumn();
    void makeRightWidget();
    QLayout *makeTextRow();
    QLayout *makePictureColumn();
    QWidget *makeLoadingLabel();
    QWidget *makeButtonRow();
    QPushButton *addButton(QHBoxLayout *row, const QString &name);
    void connectParts();
    void connectText();
    void connectPictures();
    bool hasButtons() const;
    void resizeText(const QSize &size);
    void copy();
    void modify();
};

} // namespace tavro::aiassistant
