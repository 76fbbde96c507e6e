#include "platform/forms/CutText.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QListWidget>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

namespace platform {

namespace {

// Paints no wider than what is seen of the list.
class CuttingDelegate : public QStyledItemDelegate {
public:
    explicit CuttingDelegate(QListWidget &list) : QStyledItemDelegate(&list), m_list(list) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem within = option;
        within.rect.setLeft(within.rect.left() + Indent(index));
        within.rect.setRight(std::min(within.rect.right(), m_list.viewport()->width() - 1));
        QStyledItemDelegate::paint(painter, within, index);
    }

    // No wider than the list either, so that a screen reader tells where the text is seen.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setWidth(std::min(size.width(), m_list.viewport()->width()));
        return size;
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        if (event->type() != QEvent::ToolTip || !index.isValid() ||
            QStyledItemDelegate::sizeHint(option, index).width() + Indent(index) <=
                m_list.viewport()->width())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        QToolTip::showText(event->globalPos(),
                           Qt::convertFromPlainText(index.data().toString(), Qt::WhiteSpaceNormal),
                           m_list.viewport(), option.rect);
        return true;
    }

private:
    // In steps of two thirds of a line. On a long way down they run out, so that the names have room.
    int Indent(const QModelIndex &index) const
    {
        const int step = QFontMetrics(m_list.font()).height() * 2 / 3;
        return std::min(index.data(kDepthRole).toInt() * step, m_list.viewport()->width() / 2);
    }

    QListWidget &m_list;
};

} // namespace

void CutLongTexts(QListWidget &list)
{
    list.setItemDelegate(new CuttingDelegate(list));
    list.setTextElideMode(Qt::ElideMiddle);
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

} // namespace platform
