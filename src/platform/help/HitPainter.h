#pragma once

#include <QStyledItemDelegate>

namespace platform {

// Paints an entry of a list whose first line is a title: in bold, over the rest of its text, and all of it in
// as many lines as that takes in the width of the list.
class HitPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace platform
