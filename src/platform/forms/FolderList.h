#pragma once

#include <QListWidget>

namespace platform {

// Shows one folder as a tree: the way down to it from its drive, and the folders in it. A click opens a
// folder; so do Enter, the space bar and the right arrow on the marked one, and Backspace and the left arrow
// go one up.
class FolderList : public QListWidget {
    Q_OBJECT

public:
    explicit FolderList(QWidget *parent = nullptr);

    // The open folder, without a separator at the end, except for the root. Empty at first.
    QString Path() const { return m_path; }
    // Opens another folder and emits Changed; the same one is only listed anew. Raises 68 for a drive that
    // cannot be read, 76 when there is no such folder, 75 when it cannot be read; everything stays as it was
    // then.
    void SetPath(const QString &path);

signals:
    // Another folder is open.
    void Changed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    // The mark moves by click and key, and never goes.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void List(const QString &path, const QStringList &folders);
    // What a click does: a folder that cannot be opened is greyed, and one that has gone vanishes.
    void Open(QListWidgetItem &folder);

    QString m_path;
    int m_openRow = -1;
    bool m_isDoubleClick = false; // the button that was pressed last has not been let go since
};

} // namespace platform
