#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;
class QListView;
class QSortFilterProxyModel;

namespace tavro::playout {

class HostTheme;
class MediaListModel;

/// The media library: a search field above a grid of thumbnails.
class LibraryPanel : public QFrame {
    Q_OBJECT

public:
    /// Both must outlive the panel.
    LibraryPanel(MediaListModel &model, const HostTheme &theme);

    void focusSearch();

Q_SIGNALS:
    void sigChosen(const QString &mediaId); ///< double click or Return

private:
    void build(const HostTheme &theme);
    void layOut();
    void chooseFirst();
    void showCount();

    QSortFilterProxyModel *m_filter = nullptr;
    QLineEdit *m_search = nullptr;
    QListView *m_list = nullptr;
    QLabel *m_count = nullptr;
    QLabel *m_nothing = nullptr;
};

} // namespace tavro::playout
