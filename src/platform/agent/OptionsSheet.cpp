#include "platform/agent/OptionsSheet.h"

#include "platform/agent/ScreenArea.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace platform {

namespace {

const QString kPages[] = { QStringLiteral("Output"), QStringLiteral("Speech"), QStringLiteral("Copyright") };

QString PageNamed(const QString &name)
{
    const auto found = std::find_if(std::begin(kPages), std::end(kPages), [&name](const QString &page) {
        return page.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == std::end(kPages) ? QString() : *found;
}

// Wholly within a screen that there is: the one where it stood may have gone.
QPoint Reachable(const std::optional<QPoint> &place, const QSize &size)
{
    const QRect last(place.value_or(QPoint(0, 0)), size);
    const QRect nearest = ScreenAreaAt(last.center());
    if (place && nearest.intersects(last))
        return MovedInto(nearest, *place, size);
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    return area.center() - QRect(QPoint(0, 0), size).center();
}

} // namespace

OptionsSheet::OptionsSheet(SheetSources sources)
    : m_sources(std::move(sources)), m_place(m_sources.options.Store().ReadSheetPlace())
{
    m_place.page = PageNamed(m_place.page);
    if (m_place.page.isEmpty())
        m_place.page = kPages[0];
}

OptionsSheet::~OptionsSheet()
{
    if (m_window)
        m_window->closed = nullptr;
}

void OptionsSheet::MakeWindow()
{
    if (m_window)
        return;
    m_window = std::make_unique<SheetWindow>(m_sources);
    m_window->closed = [this] { KeepPlace(); };
}

void OptionsSheet::SetVisible(bool visible)
{
    if (!visible) {
        if (m_window)
            m_window->reject();
        return;
    }
    MakeWindow();
    if (!m_window->isVisible()) {
        m_window->SetPage(m_place.page);
        m_window->move(Reachable(m_place.place, m_window->size()));
    }
    m_window->Open();
}

bool OptionsSheet::Visible() const
{
    return m_window && m_window->isVisible();
}

void OptionsSheet::KeepPlace()
{
    m_place.page = m_window->Page();
    m_place.place = m_window->pos();
    m_sources.options.Store().WriteSheetPlace(m_place);
}

QString OptionsSheet::Page() const
{
    return Visible() ? m_window->Page() : m_place.page;
}

void OptionsSheet::SetPage(const QString &page)
{
    const QString name = PageNamed(page);
    if (name.isEmpty())
        throw Error(kInvalidCall);
    m_place.page = name;
    if (m_window)
        m_window->SetPage(name);
}

Integer16 OptionsSheet::Left() const
{
    return Integer16(m_window ? m_window->x() : 0);
}

Integer16 OptionsSheet::Top() const
{
    return Integer16(m_window ? m_window->y() : 0);
}

Integer16 OptionsSheet::Width() const
{
    return Integer16(m_window ? m_window->width() : 0);
}

Integer16 OptionsSheet::Height() const
{
    return Integer16(m_window ? m_window->height() : 0);
}

} // namespace platform
