#pragma once

#include <QWidget>

#include <memory>

class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QPrintDialog;
class QPrinter;
class QTabWidget;
class QTreeWidget;

namespace platform {

class HelpBook;
class HelpPage;

// The window in which help is read: contents, index and search on the left, a page on the right, and a box to
// find words on it. Closing hides it and forgets the way one has come; the size, and the size of type, stay.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    HelpWindow();
    ~HelpWindow() override;

    // `file` is a native path; it is opened anew each time. Brings the window to the front.
    void ShowTopic(const QString &file, const QString &topic);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    enum Shelf { kContents, kIndex, kSearch };

    QWidget *MakeButtons();
    QWidget *MakeShelves();
    QWidget *MakeContents();
    QWidget *MakeIndex();
    QWidget *MakeSearch();
    QWidget *MakeFindBar();
    void MakeShortcuts();
    // An action with its shortcuts, that works in the whole window.
    QAction *AddAction(const QString &name, const QString &text, const QList<QKeySequence> &keys,
                       void (HelpWindow::*run)());

    void FillContents();
    void FillIndex();
    void PageChanged();
    void OpenStartPage();
    void Search();
    void OpenHit(int row);

    void OpenFindBar();
    void CloseFindBar();
    void FindForwards() { Find(false); }
    void FindBackwards() { Find(true); }
    void Find(bool backwards);
    void TellMarks();

    void GoToSearch();
    void ChangePane();
    void EnlargeType();
    void ReduceType();
    void UsualType();
    void TellZoom();
    void Print();
    void CloseWhatIsOpen();

    std::unique_ptr<HelpBook> m_book;
    std::unique_ptr<QPrinter> m_printer;
    QPrintDialog *m_printDialog = nullptr;
    HelpPage *m_page = nullptr;
    QTabWidget *m_shelves = nullptr;
    QTreeWidget *m_contents = nullptr;
    QLineEdit *m_indexWord = nullptr;
    QListWidget *m_index = nullptr;
    QLineEdit *m_searchWords = nullptr;
    QLabel *m_searchResult = nullptr;
    QListWidget *m_hits = nullptr;
    QWidget *m_findBar = nullptr;
    QLineEdit *m_findText = nullptr;
    QLabel *m_findResult = nullptr;
    QAction *m_back = nullptr;
    QAction *m_forward = nullptr;
    QAction *m_enlarge = nullptr;
    QAction *m_reduce = nullptr;
    bool m_wasShown = false;
};

} // namespace platform
