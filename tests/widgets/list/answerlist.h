#pragma once

#include "heldbrowser.h"
#include "widgets/answerwidget.h"
#include "widgets/chatitemwidget.h"

#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace tavro::testsupport {

aiassistant::ChatItemContext contextOf(const QString &question, const QString &message = QString());
aiassistant::ChatItemContext pictureContext();

/// Its texts can be asked for in English and Russian after this.
void loadListLanguages();
void useListLanguage(const char *name);

/// The list as it stands in the panel, with what tests look at.
class List : public aiassistant::AnswerWidget {
public:
    List();

    QScrollArea *area() const { return findChild<QScrollArea *>(QStringLiteral("scrollArea")); }
    QWidget *sheet() const { return area()->widget(); }
    QScrollBar *bar() const { return area()->verticalScrollBar(); }
    QPushButton *clearButton() const { return findChild<QPushButton *>(QStringLiteral("clearButton")); }

    std::vector<aiassistant::ChatItemWidget *> items() const;
    QStringList kinds() const; ///< the items' classes
    aiassistant::AutoResizeTextBrowser *lastBrowser() const;

    void addHeldAnswer(const QString &message); ///< types only when it is told to
    void typeWhole();
    bool isAtBottom() const;

    static void settleEvents();
};

} // namespace tavro::testsupport
