#include "platform/help/HelpWindow.h"

#include "platform/forms/SelectionKeys.h"
#include "platform/help/HelpBook.h"
#include "platform/help/HelpPage.h"
#include "platform/help/HitPainter.h"

#include <QAction>
#include <QCloseEvent>
#include <QFile>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtPrintSupport/QPrintDialog>
#include <QtPrintSupport/QPrinter>

#include <algorithm>
#include <initializer_list>

namespace platform {

namespace {

const QString kWindowTitle = QStringLiteral("Tumblewick Help");
constexpr int kType = 16; // units
constexpr int kIcon = 26;
const QSize kUsualSize(940, 680);
constexpr int kFrame = 40; // what a window manager may put around a window
constexpr int kShelfWidth = 290;
constexpr int kPageRole = Qt::UserRole;

// Without the program's pictures, buttons show their names.
QIcon IconOf(const QString &name)
{
    const QString picture = QStringLiteral(":/help/%1.svg").arg(name);
    return QFile::exists(picture) ? QIcon(picture) : QIcon();
}

QToolButton *ButtonOf(QAction *action)
{
    auto *button = new QToolButton;
    button->setObjectName(action->objectName());
    button->setDefaultAction(action);
    button->setAccessibleName(action->toolTip());
    button->setIconSize({ kIcon, kIcon });
    button->setToolButtonStyle(action->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

QLineEdit *WordsBox(const QString &name, const QString &told)
{
    auto *box = new QLineEdit;
    box->setObjectName(name);
    box->setPlaceholderText(told);
    box->setAccessibleName(told);
    box->setClearButtonEnabled(true);
    return box;
}

// The widgets of a shelf one below the other; the last takes the room there is.
QWidget *ShelfWith(std::initializer_list<QWidget *> widgets)
{
    auto *shelf = new QWidget;
    auto *rows = new QVBoxLayout(shelf);
    rows->setContentsMargins(4, 6, 4, 4);
    for (QWidget *widget : widgets)
        rows->addWidget(widget, widget == *(widgets.end() - 1) ? 1 : 0);
    return shelf;
}

// Calls `open` with what the user selects, clicks or enters in a list, or null. The keyboard's coming into a
// list makes a line the current one, but selects none, and so opens none.
template <typename List, typename Open>
void OpenWhatIsChosen(List *list, const Open &open)
{
    QObject::connect(list, &List::itemSelectionChanged, list,
                     [list, open] { open(list->selectedItems().value(0)); });
    QObject::connect(list, &List::itemActivated, list, open);
    QObject::connect(list, &List::itemClicked, list, open);
}

} // namespace

HelpWindow::HelpWindow() : m_book(std::make_unique<HelpBook>(QString()))
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(kWindowTitle);
    // The program ends by its own screens only.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_StyledBackground);
    // Ink on paper, as on the grown-ups' screens; the program's style sheet knows it by this name.
    setProperty("room", QStringLiteral("study"));

    m_page = new HelpPage;
    m_page->zoomed = [this] { TellZoom(); };
    auto *right = new QWidget;
    auto *rightRows = new QVBoxLayout(right);
    rightRows->setContentsMargins(0, 0, 0, 0);
    rightRows->setSpacing(0);
    rightRows->addWidget(m_page, 1);
    auto *panes = new QSplitter;
    panes->setObjectName(QStringLiteral("panes"));
    panes->addWidget(MakeShelves());
    panes->addWidget(right);
    panes->setStretchFactor(1, 1);
    panes->setCollapsible(1, false);
    panes->setSizes({ kShelfWidth, kUsualSize.width() - kShelfWidth });

    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(8, 8, 8, 8);
    rows->setSpacing(6);
    rows->addWidget(MakeButtons());
    rows->addWidget(panes, 1);
    rightRows->addWidget(MakeFindBar());
    MakeShortcuts();
    // A style sheet keeps a window's type from its controls.
    QFont type = font();
    type.setPixelSize(kType);
    for (QWidget *widget : findChildren<QWidget *>())
        if (widget != m_page)
            widget->setFont(type);

    connect(m_page, &QTextBrowser::sourceChanged, this, [this] { PageChanged(); });
    // Only now does the page know where it is.
    connect(m_page, &QTextBrowser::historyChanged, this, [this] { PageChanged(); });
    connect(m_page, &QTextBrowser::backwardAvailable, m_back, &QAction::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, m_forward, &QAction::setEnabled);
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
}

HelpWindow::~HelpWindow()
{
    m_page->SetBook(nullptr);
}

QAction *HelpWindow::AddAction(const QString &name, const QString &text, const QList<QKeySequence> &keys,
                               void (HelpWindow::*run)())
{
    auto *action = new QAction(IconOf(name), text, this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WindowShortcut);
    action->setToolTip(keys.isEmpty() ? text
                                      : QStringLiteral("%1 (%2)").arg(
                                            text, keys.front().toString(QKeySequence::NativeText)));
    if (run)
        connect(action, &QAction::triggered, this, run);
    addAction(action);
    return action;
}

QWidget *HelpWindow::MakeButtons()
{
    auto *bar = new QWidget;
    bar->setObjectName(QStringLiteral("buttons"));
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);

    m_back = AddAction(QStringLiteral("back"), tr("Back"), { Qt::ALT | Qt::Key_Left, Qt::Key_Back }, nullptr);
    connect(m_back, &QAction::triggered, m_page, &QTextBrowser::backward);
    m_forward = AddAction(QStringLiteral("forward"), tr("Forward"),
                          { Qt::ALT | Qt::Key_Right, Qt::Key_Forward }, nullptr);
    connect(m_forward, &QAction::triggered, m_page, &QTextBrowser::forward);
    QAction *home = AddAction(QStringLiteral("home"), tr("First page"), { Qt::ALT | Qt::Key_Home },
                              &HelpWindow::OpenStartPage);
    QAction *find = AddAction(QStringLiteral("find"), tr("Find on this page"), { Qt::CTRL | Qt::Key_F },
                              &HelpWindow::OpenFindBar);
    m_reduce = AddAction(QStringLiteral("smaller"), tr("Smaller letters"), { Qt::CTRL | Qt::Key_Minus },
                         &HelpWindow::ReduceType);
    m_enlarge = AddAction(QStringLiteral("larger"), tr("Larger letters"),
                          { Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal }, &HelpWindow::EnlargeType);
    QAction *print =
        AddAction(QStringLiteral("print"), tr("Print"), { Qt::CTRL | Qt::Key_P }, &HelpWindow::Print);

    for (QAction *action : { m_back, m_forward, home })
        row->addWidget(ButtonOf(action));
    row->addStretch(1);
    for (QAction *action : { find, m_reduce, m_enlarge, print })
        row->addWidget(ButtonOf(action));
    return bar;
}

QWidget *HelpWindow::MakeShelves()
{
    m_shelves = new QTabWidget;
    m_shelves->setObjectName(QStringLiteral("shelves"));
    m_shelves->setAccessibleName(tr("Ways to a page"));
    m_shelves->addTab(MakeContents(), tr("Contents"));
    m_shelves->addTab(MakeIndex(), tr("Index"));
    m_shelves->addTab(MakeSearch(), tr("Search"));
    return m_shelves;
}

QWidget *HelpWindow::MakeContents()
{
    m_contents = new QTreeWidget;
    m_contents->setObjectName(QStringLiteral("contents"));
    m_contents->setAccessibleName(tr("Contents"));
    m_contents->setHeaderHidden(true);
    m_contents->setIndentation(18);
    OpenWhatIsChosen(m_contents, [this](const QTreeWidgetItem *item) {
        const QString page = item ? item->data(0, kPageRole).toString() : QString();
        if (!page.isEmpty())
            m_page->Open(page);
    });
    return m_contents;
}

QWidget *HelpWindow::MakeIndex()
{
    m_indexWord = WordsBox(QStringLiteral("indexWord"), tr("Type a word"));
    m_index = new QListWidget;
    m_index->setObjectName(QStringLiteral("index"));
    m_index->setAccessibleName(tr("Index"));
    connect(m_indexWord, &QLineEdit::textChanged, this, [this] { FillIndex(); });
    connect(m_indexWord, &QLineEdit::returnPressed, this, [this] { m_index->setCurrentRow(0); });
    OpenWhatIsChosen(m_index, [this](const QListWidgetItem *item) {
        if (item)
            m_page->Open(item->data(kPageRole).toString());
    });
    InstallSelectionKeys(*m_index);
    return ShelfWith({ m_indexWord, m_index });
}

QWidget *HelpWindow::MakeSearch()
{
    m_searchWords = WordsBox(QStringLiteral("searchWords"), tr("Search all pages"));
    m_searchResult = new QLabel;
    m_searchResult->setObjectName(QStringLiteral("searchResult"));
    m_searchResult->setWordWrap(true);
    m_hits = new QListWidget;
    m_hits->setObjectName(QStringLiteral("hits"));
    m_hits->setAccessibleName(tr("Pages found"));
    m_hits->setWordWrap(true);
    m_hits->setSpacing(2);
    m_hits->setItemDelegate(new HitPainter(m_hits));
    m_hits->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_searchWords, &QLineEdit::textChanged, this, [this] { Search(); });
    connect(m_searchWords, &QLineEdit::returnPressed, this, [this] { OpenHit(0); });
    OpenWhatIsChosen(m_hits, [this](const QListWidgetItem *item) { OpenHit(m_hits->row(item)); });
    InstallSelectionKeys(*m_hits);
    Search();
    return ShelfWith({ m_searchWords, m_searchResult, m_hits });
}

QWidget *HelpWindow::MakeFindBar()
{
    m_findBar = new QWidget;
    m_findBar->setObjectName(QStringLiteral("findBar"));
    auto *row = new QHBoxLayout(m_findBar);
    row->setContentsMargins(0, 6, 0, 0);
    m_findText = WordsBox(QStringLiteral("findText"), tr("Find on this page"));
    m_findResult = new QLabel;
    m_findResult->setObjectName(QStringLiteral("findResult"));
    QAction *previous = AddAction(QStringLiteral("previous"), tr("The place before"),
                                  { Qt::SHIFT | Qt::Key_F3 }, &HelpWindow::FindBackwards);
    QAction *next =
        AddAction(QStringLiteral("next"), tr("The next place"), { Qt::Key_F3 }, &HelpWindow::FindForwards);
    QAction *done = AddAction(QStringLiteral("done"), tr("Close this box"), {}, &HelpWindow::CloseFindBar);
    row->addWidget(m_findText, 1);
    row->addWidget(m_findResult);
    for (QAction *action : { previous, next, done })
        row->addWidget(ButtonOf(action));
    connect(m_findText, &QLineEdit::textChanged, this, [this] { TellMarks(); });
    connect(m_findText, &QLineEdit::returnPressed, this, [this] { Find(false); });
    m_findBar->hide();
    return m_findBar;
}

void HelpWindow::MakeShortcuts()
{
    AddAction(QStringLiteral("goToSearch"), tr("Search all pages"), { Qt::CTRL | Qt::Key_K },
              &HelpWindow::GoToSearch);
    AddAction(QStringLiteral("usual"), tr("Usual letters"), { Qt::CTRL | Qt::Key_0 }, &HelpWindow::UsualType);
    AddAction(QStringLiteral("changePane"), tr("Between page and contents"), { Qt::Key_F6 },
              &HelpWindow::ChangePane);
    AddAction(QStringLiteral("leave"), tr("Close"), { Qt::Key_Escape }, &HelpWindow::CloseWhatIsOpen);
}

void HelpWindow::ShowTopic(const QString &file, const QString &topic)
{
    auto book = std::make_unique<HelpBook>(file);
    m_page->SetBook(book.get());
    m_book = std::move(book);
    FillContents();
    FillIndex();
    m_searchWords->clear();
    m_shelves->setCurrentIndex(kContents);
    CloseFindBar();
    m_page->Open(topic);
    if (!isVisible())
        m_page->clearHistory();

    if (!m_wasShown) {
        m_wasShown = true;
        const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
        resize(kUsualSize.boundedTo(room.size() - QSize(kFrame / 2, kFrame)));
        move(room.center() - rect().center());
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    m_page->setFocus();
}

void HelpWindow::FillContents()
{
    const QSignalBlocker quiet(m_contents);
    m_contents->clear();
    std::vector<QTreeWidgetItem *> above;
    for (const SiteMapLine &line : m_book->Contents()) {
        above.resize(std::min(std::size_t(line.depth), above.size()));
        auto *item = above.empty() ? new QTreeWidgetItem(m_contents) : new QTreeWidgetItem(above.back());
        item->setText(0, line.title);
        item->setToolTip(0, line.title);
        item->setData(0, kPageRole, line.page);
        above.push_back(item);
    }
    m_contents->expandAll();
}

void HelpWindow::FillIndex()
{
    const QSignalBlocker quiet(m_index);
    const QString word = m_indexWord->text().trimmed();
    m_index->clear();
    for (const SiteMapLine &line : m_book->Index()) {
        if (!line.title.contains(word, Qt::CaseInsensitive))
            continue;
        auto *item = new QListWidgetItem(line.title, m_index);
        item->setData(kPageRole, line.page);
    }
}

void HelpWindow::PageChanged()
{
    const QString title = m_page->documentTitle();
    setWindowTitle(title.isEmpty() ? kWindowTitle : title + QStringLiteral(" – ") + kWindowTitle);
    TellMarks();

    // The contents follow: the line of this place, or the line of its page.
    const QString opened = m_page->Opened();
    QTreeWidgetItem *best = nullptr;
    for (QTreeWidgetItemIterator item(m_contents); *item; ++item) {
        const QString page = (*item)->data(0, kPageRole).toString();
        if (page == opened) {
            best = *item;
            break;
        }
        if (!best && page.section('#', 0, 0) == opened.section('#', 0, 0))
            best = *item;
    }
    const QSignalBlocker quiet(m_contents);
    m_contents->setCurrentItem(best);
    if (best)
        m_contents->scrollToItem(best);
}

void HelpWindow::OpenStartPage()
{
    m_page->Open(m_book->StartPage());
}

void HelpWindow::Search()
{
    const QSignalBlocker quiet(m_hits);
    m_hits->clear();
    const QString words = m_searchWords->text().trimmed();
    for (const HelpHit &hit : m_book->Search(words)) {
        auto *item = new QListWidgetItem(hit.title + '\n' + hit.excerpt, m_hits);
        item->setData(kPageRole, hit.page);
    }
    if (words.isEmpty())
        m_searchResult->setText(tr("Type a word or two, such as “hint”."));
    else if (m_hits->count() == 0)
        m_searchResult->setText(tr("No page has this. Try another word."));
    else if (m_hits->count() == 1)
        m_searchResult->setText(tr("1 page"));
    else
        m_searchResult->setText(tr("%1 pages").arg(m_hits->count()));
}

void HelpWindow::OpenHit(int row)
{
    if (row < 0 || row >= m_hits->count())
        return;
    {
        const QSignalBlocker quiet(m_hits);
        m_hits->setCurrentRow(row);
    }
    m_page->Open(m_hits->item(row)->data(kPageRole).toString());
    m_page->MarkWords(m_searchWords->text());
}

void HelpWindow::OpenFindBar()
{
    m_findBar->show();
    m_findText->setFocus();
    m_findText->selectAll();
    TellMarks();
}

void HelpWindow::CloseFindBar()
{
    if (m_findBar->isHidden())
        return;
    m_findBar->hide();
    m_page->Mark(QString());
    m_page->setFocus();
}

void HelpWindow::Find(bool backwards)
{
    if (m_findBar->isHidden())
        OpenFindBar();
    m_page->FindNext(m_findText->text(), backwards);
}

void HelpWindow::TellMarks()
{
    if (m_findBar->isHidden())
        return;
    const int places = m_page->Mark(m_findText->text());
    if (m_findText->text().isEmpty())
        m_findResult->clear();
    else if (places == 0)
        m_findResult->setText(tr("Not on this page"));
    else
        m_findResult->setText(places == 1 ? tr("1 place") : tr("%1 places").arg(places));
}

void HelpWindow::GoToSearch()
{
    m_shelves->setCurrentIndex(kSearch);
    m_searchWords->setFocus();
    m_searchWords->selectAll();
}

void HelpWindow::ChangePane()
{
    if (!m_page->hasFocus()) {
        m_page->setFocus();
        return;
    }
    switch (m_shelves->currentIndex()) {
    case kContents:
        m_contents->setFocus();
        break;
    case kIndex:
        m_indexWord->setFocus();
        break;
    default:
        m_searchWords->setFocus();
        break;
    }
}

void HelpWindow::EnlargeType()
{
    m_page->SetZoom(m_page->Zoom() + 1);
}

void HelpWindow::ReduceType()
{
    m_page->SetZoom(m_page->Zoom() - 1);
}

void HelpWindow::UsualType()
{
    m_page->SetZoom(0);
}

void HelpWindow::TellZoom()
{
    m_reduce->setEnabled(m_page->Zoom() > HelpPage::kSmallest);
    m_enlarge->setEnabled(m_page->Zoom() < HelpPage::kLargest);
}

void HelpWindow::Print()
{
    if (!m_printer) {
        m_printer = std::make_unique<QPrinter>();
        m_printDialog = new QPrintDialog(m_printer.get(), this);
        m_printDialog->setOptions(QAbstractPrintDialog::PrintToFile |
                                  QAbstractPrintDialog::PrintShowPageSize);
        // The game goes on beside the question.
        m_printDialog->setWindowModality(Qt::WindowModal);
        connect(m_printDialog, qOverload<QPrinter *>(&QPrintDialog::accepted), this,
                [this](QPrinter *printer) { m_page->PrintTo(*printer); });
    }
    m_printer->setDocName(m_page->documentTitle());
    m_printDialog->show();
}

void HelpWindow::CloseWhatIsOpen()
{
    if (m_findBar->isHidden())
        close();
    else
        CloseFindBar();
}

void HelpWindow::closeEvent(QCloseEvent *event)
{
    if (m_printDialog)
        m_printDialog->hide();
    event->accept();
}

} // namespace platform
