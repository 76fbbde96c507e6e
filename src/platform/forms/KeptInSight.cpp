#include "platform/forms/KeptInSight.h"

#include "platform/forms/OnTop.h"

#include <QGuiApplication>
#include <QMargins>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <chrono>

namespace platform {

namespace {

// What a window manager may put around a box.
constexpr QMargins kFrame(6, 30, 6, 6);
// Who has not moved from one look to the next is at rest.
constexpr std::chrono::milliseconds kBetweenLooks(250);

} // namespace

KeptInSight::KeptInSight(QWidget &box) : m_box(box), m_seen(OnTop::Areas()), m_settled(m_seen)
{
    box.adjustSize();
    const QRect space = box.screen()->availableGeometry();
    const QRect around = box.parentWidget() ? box.parentWidget()->window()->frameGeometry() : space;
    QRect wanted = QRect(QPoint(0, 0), box.size()).marginsAdded(kFrame);
    wanted.moveCenter(around.center());
    box.move(FreePlace(wanted, m_settled, space).topLeft());

    m_look.callOnTimeout(this, [this] { Look(); });
    m_look.start(kBetweenLooks);
}

void KeptInSight::Look()
{
    std::vector<QRect> areas = OnTop::Areas();
    const bool atRest = areas == m_seen;
    m_seen = areas;
    if (!atRest || areas == m_settled || QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    m_settled = std::move(areas);
    const QRect frame = m_box.frameGeometry();
    const auto hides = [&frame](const QRect &area) { return area.intersects(frame); };
    if (std::any_of(m_settled.begin(), m_settled.end(), hides))
        m_box.move(FreePlace(frame, m_settled, m_box.screen()->availableGeometry()).topLeft());
}

} // namespace platform
