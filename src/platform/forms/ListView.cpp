#include "platform/forms/ListView.h"

#include "platform/forms/SelectionKeys.h"
#include "platform/forms/Twips.h"

#include <QContextMenuEvent>
#include <QFontInfo>
#include <QFontMetrics>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScopeGuard>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr int kAboveAndBelowText = 10;
constexpr int kNarrowestColumn = 48;
constexpr int kTipLength = 2000;

// Rows of one line with room to breathe. A column that reaches under the scroll bar ends its text before it.
class RowDelegate : public QStyledItemDelegate {
public:
    explicit RowDelegate(ListView &view) : QStyledItemDelegate(&view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return QSize(kNarrowestColumn, QFontMetrics(m_view.font()).height() + kAboveAndBelowText);
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem within = option;
        if (within.rect.left() < m_view.viewport()->width())
            within.rect.setRight(std::min(within.rect.right(), m_view.viewport()->width() - 1));
        QStyledItemDelegate::paint(painter, within, index);
    }

private:
    ListView &m_view;
};

} // namespace

ListView::ListView(QWidget *parent) : QTreeView(parent), m_items(new ListItems(this))
{
    setModel(m_items);
    setItemDelegate(new RowDelegate(*this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setTabKeyNavigation(false);

    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(kNarrowestColumn);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    // A third click on a title brings the list's own order back.
    header()->setSortIndicatorClearable(true);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    header()->setToolTip(
        QStringLiteral("Click to sort what you see; the list itself stays as it is. Drag the edge of a "
                       "title to widen its column."));
    header()->installEventFilter(this);
    header()->viewport()->installEventFilter(this);
    connect(header(), &QHeaderView::sectionResized, this, [this] { UpdateScrollBar(); });
    connect(m_items, &QAbstractItemModel::rowsInserted, this, [this] { KeepSelection(); });
    connect(m_items, &QAbstractItemModel::modelReset, this, [this] { UpdateScrollBar(); });
}

void ListView::SetColumns(const QStringList &titles)
{
    m_items->SetTitles(titles);
}

void ListView::CheckColumn(int column) const
{
    if (column < 1 || column > m_items->columnCount())
        throw Error(kSubscriptOutOfRange);
}

void ListView::SetColumnTwips(int column, int twips)
{
    CheckColumn(column);
    header()->resizeSection(column - 1, std::max(twips / kTwipsPerPixel, kNarrowestColumn));
}

int ListView::ColumnTwips(int column) const
{
    CheckColumn(column);
    return header()->sectionSize(column - 1) * kTwipsPerPixel;
}

ListItemReference ListView::SelectedItem() const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? ListItemReference() : m_items->InRow(selected.first().row());
}

void ListView::Select(int index)
{
    setCurrentIndex(m_items->PlaceOf(index));
}

void ListView::Refill(const std::function<void()> &fill)
{
    const ListItemReference selected = SelectedItem();
    const int place = selected.IsNothing() ? 0 : selected->Index();
    const auto restore = qScopeGuard([&] {
        if (place >= 1 && place <= Count())
            Select(place);
    });
    m_items->Clear();
    fill();
}

void ListView::Reveal(int index)
{
    scrollTo(m_items->PlaceOf(index));
}

void ListView::KeepSelection()
{
    if (m_items->Count() == 1)
        setCurrentIndex(m_items->index(0, 0));
}

void ListView::mousePressEvent(QMouseEvent *event)
{
    m_isDoubleClick = false;
    const QModelIndex before = currentIndex();
    QTreeView::mousePressEvent(event);
    // The left button is told when it is let go.
    if (event->button() != Qt::LeftButton && currentIndex().row() != before.row())
        emit Clicked();
}

void ListView::mouseReleaseEvent(QMouseEvent *event)
{
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && !std::exchange(m_isDoubleClick, false))
        emit Clicked();
}

void ListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    m_isDoubleClick = true;
    emit DoubleClicked();
}

void ListView::keyPressEvent(QKeyEvent *event)
{
    if (DoAsKey(*event))
        return;
    const QModelIndex before = currentIndex();
    QTreeView::keyPressEvent(event);
    if (currentIndex().row() != before.row())
        emit Clicked();
}

// Whether the key does what a button or the mouse does. Keys are pressed by accident, so none asks anything
// of an empty list.
bool ListView::DoAsKey(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Delete:
        if (!m_deleteButton || Count() == 0 || event.isAutoRepeat())
            return false;
        m_deleteButton->click();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
        if (m_doubleClickCaption.isEmpty() || Count() == 0 || event.isAutoRepeat())
            return false;
        DoubleClickByOtherMeans();
        return true;
    default:
        return false;
    }
}

void ListView::DoubleClickByOtherMeans()
{
    emit Clicked();
    emit DoubleClicked();
}

void ListView::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (!m_doubleClickCaption.isEmpty() && Count() > 0)
        connect(menu->addAction(m_doubleClickCaption), &QAction::triggered, this,
                [this] { DoubleClickByOtherMeans(); });
    if (m_deleteButton && m_deleteButton->isEnabled() && Count() > 0)
        connect(menu->addAction(m_deleteButton->text()), &QAction::triggered, m_deleteButton,
                [button = m_deleteButton] { button->click(); });
    if (header()->sortIndicatorSection() >= 0)
        connect(menu->addAction(QStringLiteral("Show in the order of the &list")), &QAction::triggered, this,
                [this] { header()->setSortIndicator(-1, Qt::AscendingOrder); });
    if (menu->isEmpty()) {
        delete menu;
        return;
    }
    const QPoint place = event->reason() == QContextMenuEvent::Keyboard
                             ? viewport()->mapToGlobal(visualRect(currentIndex()).center())
                             : event->globalPos();
    menu->popup(place);
}

bool ListView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && ShowWholeText(static_cast<QHelpEvent *>(event)->pos()))
        return true;
    return QTreeView::viewportEvent(event);
}

// A text that its column cuts off is told whole.
bool ListView::ShowWholeText(const QPoint &place)
{
    const QModelIndex index = indexAt(place);
    if (!index.isValid())
        return false;
    const QString text = index.data(Qt::UserRole).toString();
    const QRect seen = visualRect(index) & viewport()->rect();
    const int needed = QFontMetrics(font()).horizontalAdvance(index.data().toString());
    if (needed + kAboveAndBelowText < seen.width() && !text.contains(QLatin1Char('\n')))
        return false;
    QToolTip::showText(viewport()->mapToGlobal(place),
                       Qt::convertFromPlainText(text.left(kTipLength), Qt::WhiteSpaceNormal), viewport(),
                       visualRect(index));
    return true;
}

void ListView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    UpdateScrollBar();
}

void ListView::changeEvent(QEvent *event)
{
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        FitTitles();
}

bool ListView::eventFilter(QObject *watched, QEvent *event)
{
    // A style sheet gives the header the window's type when it takes hold of it, and again later.
    const bool isOfTitles = watched == header() || watched == header()->viewport();
    if (isOfTitles && event->type() == QEvent::FontChange)
        FitTitles();
    return QTreeView::eventFilter(watched, event);
}

void ListView::showEvent(QShowEvent *event)
{
    QTreeView::showEvent(event);
    FitTitles(); // a style sheet may have undone it when it took hold of the header
}

// The titles grow with the type of the list. They are measured with the font of the header and painted with
// that of its viewport.
void ListView::FitTitles()
{
    const int size = QFontInfo(font()).pixelSize();
    for (QWidget *widget : { static_cast<QWidget *>(header()), header()->viewport() }) {
        QFont titles = widget->font();
        if (titles.pixelSize() == size)
            continue;
        titles.setPixelSize(size);
        widget->setFont(titles);
    }
}

// Columns that share the whole width of the control reach under its frame and scroll bar; that little is no
// reason to scroll sideways.
void ListView::UpdateScrollBar()
{
    const auto policy = header()->length() > width() ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    if (policy != horizontalScrollBarPolicy())
        setHorizontalScrollBarPolicy(policy);
}

QItemSelectionModel::SelectionFlags ListView::selectionCommand(const QModelIndex &index,
                                                               const QEvent *event) const
{
    return KeptSelection(index, QTreeView::selectionCommand(index, event));
}

} // namespace platform
