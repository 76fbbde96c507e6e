#include "shell/ControlLooks.h"

#include <QAbstractTextDocumentLayout>
#include <QColor>
#include <QEvent>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGraphicsEffect>
#include <QIcon>
#include <QLabel>
#include <QLinearGradient>
#include <QListView>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextFrame>

#include <algorithm>
#include <cmath>

namespace tumblewick {

namespace {

class AnswerDelegate : public QStyledItemDelegate {
public:
    explicit AnswerDelegate(QListView &view) : QStyledItemDelegate(&view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const override
    {
        const QAbstractItemModel &answers = *index.model();
        int needed = 0;
        for (int row = 0; row < answers.rowCount(); ++row)
            needed += HeightOf(answers.index(row, 0));
        const int spare = m_view.viewport()->height() - needed;
        const int share = std::max(0, spare / std::max(answers.rowCount(), kAnswers));
        return QSize(m_view.viewport()->width(), HeightOf(index) + share);
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->icon.isNull())
            return;
        option->decorationSize = QSize(BadgeSize(), BadgeSize());
        const QPixmap picture = option->icon.pixmap(option->decorationSize, m_view.devicePixelRatioF());
        QIcon always;
        for (QIcon::Mode mode : { QIcon::Normal, QIcon::Selected, QIcon::Active })
            always.addPixmap(picture, mode);
        option->icon = always;
    }

private:
    int BadgeSize() const { return QFontInfo(m_view.font()).pixelSize() * 3 / 2; }

    int HeightOf(const QModelIndex &index) const
    {
        const int width = std::max(1, m_view.viewport()->width() - BadgeSize() - kBesideText);
        const QRect text = QFontMetrics(m_view.font())
                               .boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap,
                                             index.data(Qt::DisplayRole).toString());
        return std::max(text.height(), BadgeSize()) + kAboveAndBelow;
    }

    static constexpr int kAnswers = 4;
    // What the style sheet's borders and the gap behind the badge take.
    static constexpr int kBesideText = 28;
    static constexpr int kAboveAndBelow = 7;
    QListView &m_view;
};

class SunkenText : public QObject {
public:
    explicit SunkenText(QTextEdit &panel) : QObject(&panel), m_panel(panel)
    {
        panel.viewport()->installEventFilter(this);
        QObject::connect(panel.document(), &QTextDocument::contentsChanged, this, [this] { Sink(); });
        // A panel that was not shown yet has no lines to measure.
        QObject::connect(panel.document()->documentLayout(),
                         &QAbstractTextDocumentLayout::documentSizeChanged, this, [this] { Sink(); });
        Sink();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            Sink();
        return QObject::eventFilter(watched, event);
    }

private:
    void Sink()
    {
        if (m_isSinking)
            return;
        const QTextDocument &document = *m_panel.document();
        qreal textHeight = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            if (block.next().isValid() || block.length() > 1) // the line behind the last line feed is empty
                textHeight += document.documentLayout()->blockBoundingRect(block).height();
        const qreal room = m_panel.viewport()->height() - textHeight - document.documentMargin();
        QTextFrameFormat format = document.rootFrame()->frameFormat();
        const qreal margin = std::clamp(std::floor(room), document.documentMargin(), kMistReaches);
        if (format.topMargin() == margin)
            return;
        m_isSinking = true;
        format.setTopMargin(margin);
        document.rootFrame()->setFrameFormat(format);
        m_isSinking = false;
    }

    static constexpr qreal kMistReaches = 40;
    QTextEdit &m_panel;
    bool m_isSinking = false;
};

class PictureScale : public QObject {
public:
    explicit PictureScale(QPushButton &button)
        : QObject(&button), m_button(button), m_designHeight(button.height()),
          m_designPicture(button.iconSize())
    {
        button.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize && m_designHeight > 0)
            m_button.setIconSize(m_designPicture * m_button.height() / m_designHeight);
        return QObject::eventFilter(watched, event);
    }

private:
    QPushButton &m_button;
    const int m_designHeight;
    const QSize m_designPicture;
};

class LampLetters : public QGraphicsEffect {
public:
    using QGraphicsEffect::QGraphicsEffect;

    QRectF boundingRectFor(const QRectF &source) const override
    {
        return source.adjusted(-kEdge, -kEdge, kEdge, kEdge + kDrop);
    }

protected:
    void draw(QPainter *painter) override
    {
        QPoint place;
        const QPixmap letters = sourcePixmap(Qt::LogicalCoordinates, &place, NoPad);
        if (letters.isNull())
            return;
        const QPixmap shadow = Tinted(letters, QColor(0x1a, 0x0c, 0x24, 150));
        const QPixmap edge = Tinted(letters, QColor(0x3a, 0x1a, 0x2e));
        QLinearGradient gold(0, letters.deviceIndependentSize().height() * 0.15, 0,
                             letters.deviceIndependentSize().height() * 0.85);
        gold.setColorAt(0, QColor(0xff, 0xf6, 0xcf));
        gold.setColorAt(0.5, QColor(0xff, 0xd3, 0x6e));
        gold.setColorAt(1, QColor(0xf5, 0x9f, 0x2c));
        painter->drawPixmap(place + QPoint(0, kDrop), shadow);
        for (int step = 0; step < kSteps; ++step) {
            const qreal angle = 2 * M_PI * step / kSteps;
            painter->drawPixmap(QPointF(place) + kEdge * QPointF(std::cos(angle), std::sin(angle)), edge);
        }
        painter->drawPixmap(place, Tinted(letters, gold));
    }

private:
    static QPixmap Tinted(QPixmap letters, const QBrush &brush)
    {
        QPainter painter(&letters);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRectF(QPointF(), letters.deviceIndependentSize()), brush);
        return letters;
    }

    static constexpr int kEdge = 4;
    static constexpr int kDrop = 9;
    static constexpr int kSteps = 24;
};

} // namespace

void ShareHeightAmongAnswers(QListView &list)
{
    list.setItemDelegate(new AnswerDelegate(list));
}

void SinkText(QTextEdit &panel)
{
    new SunkenText(panel);
}

void ScalePicture(QPushButton &button)
{
    new PictureScale(button);
}

void LightLetters(QLabel &label)
{
    label.setGraphicsEffect(new LampLetters(&label));
}

} // namespace tumblewick
