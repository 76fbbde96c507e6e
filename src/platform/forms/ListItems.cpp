#include "platform/forms/ListItems.h"

#include <algorithm>

namespace platform {

namespace {

// No column is wide enough for more, and measuring a page of text for each row would hold up scrolling.
constexpr int kShownLength = 400;

// One line, however many there are in the text.
QString Shown(const QString &text)
{
    QString shown = text.left(kShownLength);
    for (QChar &letter : shown)
        if (letter == QLatin1Char('\n') || letter == QLatin1Char('\r') || letter == QLatin1Char('\t'))
            letter = QLatin1Char(' ');
    return shown;
}

template <class Items, class Item>
int PositionOf(const Items &items, const Item &item)
{
    // From the end, where new ones are.
    const auto found =
        std::find_if(items.rbegin(), items.rend(), [&](const auto &each) { return each.get() == &item; });
    return static_cast<int>(items.rend() - found) - 1;
}

} // namespace

const QString &ListItem::SubItem(int number) const
{
    if (number < 1 || number >= m_texts.size())
        throw Error(kSubscriptOutOfRange);
    return m_texts[number];
}

void ListItem::SetSubItem(int number, const QString &text)
{
    SubItem(number); // raises for a column that is not there
    Set(number, text);
}

void ListItem::Set(int column, const QString &text)
{
    m_texts[column] = text;
    if (m_list)
        m_list->Changed(*this);
}

int ListItem::Index() const
{
    if (!m_list)
        throw Error(kSubscriptOutOfRange);
    return m_list->IndexOf(*this);
}

ListItems::~ListItems()
{
    for (const Item &item : m_items)
        item->m_list = nullptr;
}

void ListItems::SetTitles(const QStringList &titles)
{
    beginResetModel();
    m_titles = titles;
    endResetModel();
}

ListItemReference ListItems::Add(const QString &text)
{
    QStringList texts(std::max<qsizetype>(m_titles.size(), 1));
    texts.first() = text;
    auto item = std::make_shared<ListItem>(std::move(texts));
    item->m_list = this;
    const auto place = m_sortColumn < 0 ? m_rows.end()
                                        : std::upper_bound(m_rows.begin(), m_rows.end(), item,
                                                           [this](const Item &left, const Item &right) {
                                                               return ComesBefore(left, right);
                                                           });
    const int row = static_cast<int>(place - m_rows.begin());
    beginInsertRows({}, row, row);
    m_items.push_back(item);
    m_rows.insert(place, item);
    endInsertRows();
    return ListItemReference(item);
}

ListItemReference ListItems::At(int index) const
{
    if (index < 1 || index > Count())
        throw Error(kSubscriptOutOfRange);
    return ListItemReference(m_items[static_cast<std::size_t>(index - 1)]);
}

void ListItems::Remove(int index)
{
    At(index); // raises when there is none
    const Item item = m_items[static_cast<std::size_t>(index - 1)];
    const int row = RowOf(*item);
    beginRemoveRows({}, row, row);
    m_items.erase(m_items.begin() + index - 1);
    m_rows.erase(m_rows.begin() + row);
    item->m_list = nullptr;
    endRemoveRows();
}

void ListItems::Clear()
{
    beginResetModel();
    for (const Item &item : m_items)
        item->m_list = nullptr;
    m_items.clear();
    m_rows.clear();
    endResetModel();
}

int ListItems::IndexOf(const ListItem &item) const
{
    return PositionOf(m_items, item) + 1;
}

ListItemReference ListItems::InRow(int row) const
{
    if (row < 0 || row >= Count())
        return nullptr;
    return ListItemReference(m_rows[static_cast<std::size_t>(row)]);
}

int ListItems::RowOf(const ListItem &item) const
{
    return PositionOf(m_rows, item);
}

QModelIndex ListItems::PlaceOf(int index) const
{
    At(index); // raises when there is none
    return createIndex(RowOf(*m_items[static_cast<std::size_t>(index - 1)]), 0);
}

// The row stays where it is, also in an order that the new text has left: it must not jump away from whoever
// works on it.
void ListItems::Changed(const ListItem &item)
{
    const int row = RowOf(item);
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int ListItems::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Count();
}

int ListItems::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_titles.size());
}

QVariant ListItems::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::UserRole))
        return {};
    const QString &text = m_rows[static_cast<std::size_t>(index.row())]->m_texts[index.column()];
    return role == Qt::UserRole ? text : Shown(text);
}

QVariant ListItems::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_titles.value(section);
}

bool ListItems::ComesBefore(const Item &left, const Item &right) const
{
    const int order = QString::localeAwareCompare(left->m_texts[m_sortColumn].toLower(),
                                                  right->m_texts[m_sortColumn].toLower());
    return m_sortOrder == Qt::AscendingOrder ? order < 0 : order > 0;
}

void ListItems::sort(int column, Qt::SortOrder order)
{
    if (column == m_sortColumn && (column < 0 || order == m_sortOrder))
        return;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<Item> items;
    for (const QModelIndex &each : before)
        items.push_back(m_rows[static_cast<std::size_t>(each.row())]);
    m_sortColumn = column < columnCount() ? column : -1;
    m_sortOrder = order;
    m_rows = m_items;
    if (m_sortColumn >= 0)
        std::stable_sort(m_rows.begin(), m_rows.end(),
                         [this](const Item &left, const Item &right) { return ComesBefore(left, right); });
    QModelIndexList after;
    for (std::size_t at = 0; at < items.size(); ++at)
        after << index(RowOf(*items[at]), before[static_cast<qsizetype>(at)].column());
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

} // namespace platform
