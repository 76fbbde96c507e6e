#pragma once

#include "platform/Reference.h"

#include <QAbstractTableModel>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace platform {

class ListItems;

// One entry of a ListView. Lives as long as somebody refers to it; one that was removed keeps its texts and
// stands nowhere any more.
class ListItem {
public:
    explicit ListItem(QStringList texts) : m_texts(std::move(texts)) {}

    const QString &Text() const { return m_texts.first(); }
    void SetText(const QString &text) { Set(0, text); }
    // The text in a column behind the first, counted from 1; empty until it is set. Raises 9 for a column
    // that the list does not have.
    const QString &SubItem(int number) const;
    void SetSubItem(int number, const QString &text);
    // The place in the list, from 1, whatever order the user is looking at. Raises 9 for a removed one.
    int Index() const;

private:
    friend class ListItems;
    void Set(int column, const QString &text);

    QStringList m_texts;
    ListItems *m_list = nullptr; // null when removed
};
using ListItemReference = Reference<ListItem>;

// The entries behind a ListView, in their own order and in the one that the user looks at. Rows and columns
// of the model are those of the view, from 0; everything else counts from 1.
class ListItems : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit ListItems(QObject *parent = nullptr) : QAbstractTableModel(parent) {}
    ~ListItems() override;

    void SetTitles(const QStringList &titles);

    int Count() const { return static_cast<int>(m_items.size()); }
    ListItemReference Add(const QString &text);
    // Both raise 9 when there is no such entry.
    ListItemReference At(int index) const;
    void Remove(int index);
    void Clear();

    int IndexOf(const ListItem &item) const;
    ListItemReference InRow(int row) const; // null when there is no such row
    int RowOf(const ListItem &item) const;
    QModelIndex PlaceOf(int index) const; // in the view; raises 9 when there is no such entry
    void Changed(const ListItem &item);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // For the eye alone: the entries keep their indices. Column -1 shows them in their own order.
    void sort(int column, Qt::SortOrder order) override;

private:
    using Item = std::shared_ptr<ListItem>;
    bool ComesBefore(const Item &left, const Item &right) const;

    QStringList m_titles;
    std::vector<Item> m_items; // in their own order
    std::vector<Item> m_rows;  // in the order of the view
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

} // namespace platform
