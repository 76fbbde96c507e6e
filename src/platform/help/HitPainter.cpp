#include "platform/help/HitPainter.h"

#include <QApplication>
#include <QListView>
#include <QPainter>

namespace platform {

namespace {

constexpr int kNoEnd = 1 << 20;
constexpr int kHow = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

struct Part {
    QString text;
    QFont font;

    int HeightIn(int width) const
    {
        return QFontMetrics(font).boundingRect(QRect(0, 0, width, kNoEnd), kHow, text).height();
    }
};

// Of the entry's own text: that of the option has other signs between its lines.
Part TitleOf(const QStyleOptionViewItem &option)
{
    QFont bold = option.font;
    bold.setBold(true);
    return { option.index.data().toString().section(QLatin1Char('\n'), 0, 0), bold };
}

Part RestOf(const QStyleOptionViewItem &option)
{
    return { option.index.data().toString().section(QLatin1Char('\n'), 1), option.font };
}

const QStyle &StyleOf(const QStyleOptionViewItem &option)
{
    return option.widget ? *option.widget->style() : *QApplication::style();
}

QRect TextIn(const QStyleOptionViewItem &option)
{
    return StyleOf(option).subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
}

} // namespace

void HitPainter::paint(QPainter *painter, const QStyleOptionViewItem &given, const QModelIndex &index) const
{
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    QRect place = TextIn(option);
    const Part title = TitleOf(option);
    const Part rest = RestOf(option);
    option.text.clear();
    StyleOf(option).drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
    painter->save();
    painter->setPen(option.palette.color(QPalette::Text));
    painter->setFont(title.font);
    painter->drawText(place, kHow, title.text);
    place.setTop(place.top() + title.HeightIn(place.width()));
    painter->setFont(rest.font);
    painter->drawText(place, kHow, rest.text);
    painter->restore();
}

QSize HitPainter::sizeHint(const QStyleOptionViewItem &given, const QModelIndex &index) const
{
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    const auto *list = qobject_cast<const QListView *>(option.widget);
    const int width = list ? list->viewport()->width() - 2 * list->spacing() : option.rect.width();
    // What the style leaves around the text tells how much of the width is for it.
    option.rect = QRect(0, 0, width, kNoEnd);
    const QRect place = TextIn(option);
    const int height = TitleOf(option).HeightIn(place.width()) + RestOf(option).HeightIn(place.width());
    return { width, option.rect.height() - place.height() + height };
}

} // namespace platform
