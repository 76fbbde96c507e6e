#pragma once

#include <QListWidget>

class QPushButton;

namespace platform {

// Shows the names of all files of one folder. A list may have any name, so those that begin with a full stop,
// which most systems hide, are among them unless the box is told otherwise.
class FileListBox : public QListWidget {
    Q_OBJECT

public:
    explicit FileListBox(QWidget *parent = nullptr);

    QString Path() const { return m_path; }
    // Lists another folder; the selection goes. The one that is listed already changes nothing. Raises 76
    // when there is no such folder, 75 when it cannot be read; the list is then empty and the path as before.
    void SetPath(const QString &path);
    // Lists the folder anew, keeping the selection when the file is still there. Raises the same; the list is
    // then empty.
    void Refresh();

    // Leaves out what a system hides, from the next listing on.
    void LeaveOutHidden() { m_leavesOutHidden = true; }

    // The selected file's name, empty when none is selected.
    QString FileName() const;

    // Gives `button` a line in the context menu of a file.
    void SetMenuButton(QPushButton &button) { m_menuButton = &button; }
    // Lets a double click on a file, and a line in its context menu, press `button`.
    void SetDoubleClickButton(QPushButton &button);
    // Lets the Delete key, and a line in the context menu, press `button` while a file is selected.
    void SetDeleteButton(QPushButton &button);

signals:
    // A file was clicked, or selected by a key. Comes once for a double click, before the button is pressed.
    void Clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    // Nothing but another file takes the selection from a file.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void List(const QString &path);

    QString m_path;
    QString m_selectedBefore; // the press of the mouse
    bool m_leavesOutHidden = false;
    bool m_isListed = false;      // the list shows what m_path held
    bool m_isDoubleClick = false; // the button that was pressed last has not been let go since
    QPushButton *m_menuButton = nullptr;
    QPushButton *m_doubleClickButton = nullptr;
    QPushButton *m_deleteButton = nullptr;
};

} // namespace platform
