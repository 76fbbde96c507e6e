#include "platform/agent/BalloonWindow.h"

#include "platform/agent/ScreenArea.h"
#include "platform/agent/StageColours.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr int kPadding = 12;
constexpr int kMargin = 40; // round the bubble, for the tail
constexpr double kTailLength = 22;
constexpr double kTailWidth = 20;
constexpr double kCorner = 16;
constexpr double kBorder = 1.6;
const QColor kLine(0x6b, 0x53, 0x3a);

QFont BalloonFont(int size)
{
    QFont font;
    font.setFamilies({ QStringLiteral("Comic Neue"), QStringLiteral("Comic Sans MS") });
    font.setPixelSize(size);
    font.setBold(true);
    return font;
}

// All balloons of the program, so that one may take the place of another that has had its say.
std::vector<BalloonWindow *> g_balloons;

// Where the rows of a list end, in units of its viewport.
int EndOfRows(const QAbstractItemView &list)
{
    const QAbstractItemModel *model = list.model();
    const int rows = model ? model->rowCount(list.rootIndex()) : 0;
    return rows > 0 ? list.visualRect(model->index(rows - 1, 0, list.rootIndex())).bottom() + 1 : 0;
}

// The part of a control, from its top, that the user may press, type into, choose from or read now.
int NeededHeight(const QWidget &control)
{
    if (const auto *text = qobject_cast<const QTextEdit *>(&control))
        return text->document()->isEmpty() ? 0 : control.height();
    if (const auto *text = qobject_cast<const QPlainTextEdit *>(&control))
        return text->document()->isEmpty() ? 0 : control.height();
    if (!control.isEnabled())
        return 0;
    if (const auto *list = qobject_cast<const QAbstractItemView *>(&control)) {
        const int end = EndOfRows(*list);
        return end <= 0 ? 0 : std::min(list->viewport()->y() + end, control.height());
    }
    const bool used =
        qobject_cast<const QAbstractButton *>(&control) || qobject_cast<const QLineEdit *>(&control);
    return used ? control.height() : 0;
}

// What the user needs of the program's windows at this moment. A box that waits for its answer is needed
// whole.
std::vector<QRect> ControlsInUse()
{
    std::vector<QRect> controls;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowType() == Qt::ToolTip)
            continue;
        if (window->isModal()) {
            controls.push_back(window->frameGeometry());
            continue;
        }
        for (const QWidget *control : window->findChildren<QWidget *>()) {
            const int height = control->isVisible() ? NeededHeight(*control) : 0;
            if (height > 0)
                controls.emplace_back(control->mapToGlobal(QPoint(0, 0)), QSize(control->width(), height));
        }
    }
    return controls;
}

} // namespace

BalloonWindow::BalloonWindow() : m_text(BalloonFont(kUsualTypeSize))
{
    setFont(BalloonFont(kUsualTypeSize));
    g_balloons.push_back(this);
}

BalloonWindow::~BalloonWindow()
{
    std::erase(g_balloons, this);
}

void BalloonWindow::SetTypeSize(int size)
{
    if (font().pixelSize() == size)
        return;
    setFont(BalloonFont(size));
    const QString shown = m_text.Whole();
    m_text = BalloonText(font());
    m_text.Append(shown, false);
    LayOut();
    if (!isVisible())
        return;
    Place();
    Render();
    update();
}

// Takes the measures of the text that is going to stand here.
void BalloonWindow::LayOut()
{
    BalloonText whole(font());
    whole.Append(m_coming, false);
    m_textWidth = std::min(std::ceil(whole.Widest()), std::ceil(whole.LineLimit())) + 1;
    m_mostLines = std::clamp<qsizetype>(whole.Lines().size(), 1, BalloonText::kLinesShown);
    m_hasSide = false;
}

void BalloonWindow::Begin(const QString &whole)
{
    m_next = whole;
    m_begins = true;
    m_givesWay = false;
}

// The first words of a line: what has been said goes now.
void BalloonWindow::BeginLine()
{
    m_text.Clear();
    m_coming = m_next;
    m_begins = false;
    // Those of the moment when it begins: it is not to jump when a button comes alive behind it.
    m_controls = ControlsInUse();
    m_owner.controls = m_controls;
    LayOut();
}

void BalloonWindow::Append(const QString &piece, bool joined)
{
    if (m_begins)
        BeginLine();
    const bool first = m_text.Lines().isEmpty();
    m_text.Append(piece, joined);
    if (m_text.Lines().isEmpty())
        return;
    setAccessibleName(m_text.Whole());
    Place();
    Render();
    if (first)
        TakePlaceOfOthers();
    if (!isVisible()) {
        BringToFront();
        show();
    }
    update();
}

void BalloonWindow::TakePlaceOfOthers()
{
    for (BalloonWindow *other : g_balloons) {
        if (other != this && other->m_givesWay && other->m_bubble.intersects(m_bubble))
            other->Empty();
    }
}

void BalloonWindow::Follow(const BalloonOwner &owner)
{
    m_owner = owner;
    m_owner.controls = m_controls;
    if (!isVisible())
        return;
    const QRect before = m_bubble;
    const QPointF tipBefore = m_tip;
    Place();
    // Mostly the balloon just moves along.
    if (before.size() != m_bubble.size() || tipBefore != m_tip) {
        Render();
        update();
    }
}

void BalloonWindow::Empty()
{
    hide();
    m_text.Clear();
    setAccessibleName(QString());
}

QSize BalloonWindow::BubbleSize(qsizetype lines) const
{
    const double height = double(lines) * m_text.LineHeight();
    return QSize(std::max(int(m_textWidth), 2 * int(kCorner)) + 2 * kPadding,
                 int(std::ceil(height)) + 2 * kPadding);
}

void BalloonWindow::Place()
{
    // The place is that of the full balloon, so that it does not change sides while it grows.
    const BalloonPlace place =
        PlaceBalloon(BubbleSize(m_mostLines), m_owner, ScreenAreaAt(m_owner.body.center()),
                     m_hasSide ? std::optional(m_side) : std::nullopt);
    const qsizetype lines = std::clamp<qsizetype>(m_text.Lines().size(), 1, m_mostLines);
    m_bubble = QRect(place.bubble.topLeft(), BubbleSize(lines));
    m_side = place.side;
    m_hasSide = true;
    if (m_side == BalloonPlace::Side::Above)
        m_bubble.moveBottom(place.bubble.bottom());
    else if (m_side != BalloonPlace::Side::Below)
        m_bubble.moveTop(std::clamp(m_owner.mouth.y() - m_bubble.height() / 2, place.bubble.top(),
                                    place.bubble.bottom() + 1 - m_bubble.height()));

    const QPointF middle = QRectF(m_bubble).center();
    const QRectF inner = QRectF(m_bubble).adjusted(kCorner, kCorner, -kCorner, -kCorner);
    const QPointF mouth(m_owner.mouth);
    QPointF root;
    switch (m_side) {
    case BalloonPlace::Side::Above:
        root = QPointF(std::clamp(mouth.x(), inner.left(), std::max(inner.left(), inner.right())),
                       m_bubble.bottom());
        break;
    case BalloonPlace::Side::Below:
        root = QPointF(std::clamp(mouth.x(), inner.left(), std::max(inner.left(), inner.right())),
                       m_bubble.top());
        break;
    case BalloonPlace::Side::Left:
        root = QPointF(m_bubble.right(), middle.y());
        break;
    case BalloonPlace::Side::Right:
        root = QPointF(m_bubble.left(), middle.y());
        break;
    }
    const QPointF way = mouth - root;
    const double distance = std::hypot(way.x(), way.y());
    const double length = std::min(kTailLength, distance);
    const QPointF tip = distance > 1 ? root + way * (length / distance) : root;
    const QRect window = m_bubble.adjusted(-kMargin, -kMargin, kMargin, kMargin);
    m_tip = tip - QPointF(window.topLeft());
    setGeometry(window);
}

void BalloonWindow::Render()
{
    m_image = BlankPicture();
    QPainter painter(&m_image);
    painter.setRenderHint(QPainter::Antialiasing);

    const QRectF bubble = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);
    QPainterPath shape;
    shape.addRoundedRect(bubble, kCorner, kCorner);
    const bool upright = m_side == BalloonPlace::Side::Above || m_side == BalloonPlace::Side::Below;
    QPointF root;
    if (upright) {
        const double x = std::clamp(
            m_tip.x(), bubble.left() + kCorner + kTailWidth / 2,
            std::max(bubble.left() + kCorner + kTailWidth / 2, bubble.right() - kCorner - kTailWidth / 2));
        root = QPointF(x, m_side == BalloonPlace::Side::Above ? bubble.bottom() - 2 : bubble.top() + 2);
    } else {
        root = QPointF(m_side == BalloonPlace::Side::Left ? bubble.right() - 2 : bubble.left() + 2,
                       bubble.center().y());
    }
    const QPointF half = upright ? QPointF(kTailWidth / 2, 0) : QPointF(0, kTailWidth / 2);
    QPainterPath tail(root - half);
    tail.quadTo(root + (m_tip - root) * 0.35 - half * 0.3, m_tip);
    tail.quadTo(root + (m_tip - root) * 0.35 + half * 0.3, root + half);
    tail.closeSubpath();
    painter.setPen(QPen(kLine, kBorder, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(kPaper);
    painter.drawPath(shape.united(tail));

    painter.setPen(kInk);
    painter.setFont(font());
    const QFontMetricsF metrics(font());
    double baseline = bubble.top() + kPadding + metrics.ascent();
    for (const QString &line : m_text.ShownLines()) {
        painter.drawText(QPointF(bubble.left() + kPadding, baseline), line);
        baseline += m_text.LineHeight();
    }
    painter.end();
    PictureHasChanged();
}

} // namespace platform
