#pragma once

#include "platform/forms/ListItems.h"

#include <QTreeView>

#include <functional>

class QPushButton;

namespace platform {

// A list of entries in columns. Entries and columns are counted from 1 in the list's own order, which is that
// of the file behind it: the user may widen columns, and sort by a click on a title, without changing it.
//
// As long as there are entries one of them is selected: the first at first, the neighbour behind a removal.
// Only an empty list has none.
class ListView : public QTreeView {
    Q_OBJECT

public:
    explicit ListView(QWidget *parent = nullptr);

    // Also how many columns there are. Called once, before the first entry comes.
    void SetColumns(const QStringList &titles);
    // In twips, as the controls of a screen are measured. Raise 9 for a column that is not there.
    void SetColumnTwips(int column, int twips);
    int ColumnTwips(int column) const;

    int Count() const { return m_items->Count(); }
    // A new entry at the end of the list.
    ListItemReference Add(const QString &text) { return m_items->Add(text); }
    // Both raise 9 when there is no such entry.
    ListItemReference Item(int index) const { return m_items->At(index); }
    void Remove(int index) { m_items->Remove(index); }
    // Takes all entries away and lets `fill` add them anew. The selection keeps its place in the list if that
    // is there again, also when `fill` raises something, which is passed on.
    void Refill(const std::function<void()> &fill);

    // The selected entry; in an empty list nothing, so that its use raises 91.
    ListItemReference SelectedItem() const;
    // Selecting by program emits nothing. Raises 9 when there is no such entry.
    void Select(int index);
    // Scrolls to the entry. Raises 9 when there is none.
    void Reveal(int index);

    // Lets the Delete key, and a line in the context menu, press `button` while there are entries.
    void SetDeleteButton(QPushButton &button) { m_deleteButton = &button; }
    // Lets Enter, F2 and a line in the context menu with this caption do what a double click does.
    void SetDoubleClickCaption(const QString &caption) { m_doubleClickCaption = caption; }

signals:
    // The list was clicked, on an entry or beside all, or the user selected another entry by key or menu.
    // Comes before DoubleClicked, once.
    void Clicked();
    void DoubleClicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    // Nothing but another entry takes the selection from an entry.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    bool DoAsKey(const QKeyEvent &event);
    void DoubleClickByOtherMeans();
    bool ShowWholeText(const QPoint &place);
    void KeepSelection();
    void UpdateScrollBar();
    void FitTitles();
    void CheckColumn(int column) const;

    ListItems *m_items; // owned by the view
    QPushButton *m_deleteButton = nullptr;
    QString m_doubleClickCaption;
    bool m_isDoubleClick = false; // the button that was pressed last has not been let go since
};

} // namespace platform
