#include "platform/forms/CutText.h"

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
        within.rect.setRight(std::min(within.rect.right(), m_list.viewport()->width() - 1));
        QStyledItemDelegate::paint(painter, within, index);
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        if (event->type() != QEvent::ToolTip || !index.isValid() ||
            sizeHint(option, index).width() <= m_list.viewport()->width())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        QToolTip::showText(event->globalPos(),
                           Qt::convertFromPlainText(index.data().toString(), Qt::WhiteSpaceNormal),
                           m_list.viewport(), option.rect);
        return true;
    }

private:
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
