#include "platform/agent/StageWindow.h"

#include <QApplication>
#include <QPainter>
#include <QTimer>
#include <QWindow>
#include <QtGui/qguiapplication_platform.h>

#include <algorithm>
#include <utility>
#include <vector>
#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace platform {

namespace {

constexpr int kAskForCompositor = 2000; // milliseconds
// The clickable outline may be a little behind the picture; the visible one may not.
constexpr int kInputShapeInterval = 120; // milliseconds
constexpr int kSolid = 128;
constexpr int kTouchable = 40;

// Null when the windows are not those of an X server.
xcb_connection_t *Connection()
{
    // Other platforms have the native interface too, and would crash on its use.
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    auto *native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->connection() : nullptr;
}

bool CompositorRuns(xcb_connection_t *connection)
{
    static const xcb_atom_t selection = [connection] {
        const QByteArray name("_NET_WM_CM_S0");
        const auto cookie = xcb_intern_atom(connection, 0, std::uint16_t(name.size()), name.constData());
        xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(connection, cookie, nullptr);
        const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        free(reply);
        return atom;
    }();
    const auto cookie = xcb_get_selection_owner(connection, selection);
    xcb_get_selection_owner_reply_t *reply = xcb_get_selection_owner_reply(connection, cookie, nullptr);
    const bool runs = reply && reply->owner != XCB_NONE;
    free(reply);
    return runs;
}

// The parts of the image that are at least so opaque, one rectangle for each run of pixels; equal runs below
// each other share one.
std::vector<xcb_rectangle_t> RunsOf(const QImage &image, int opaque)
{
    std::vector<xcb_rectangle_t> runs;
    std::size_t rowBefore = 0;
    // Asked once: it is a call of the library, and this runs over every pixel of every picture.
    const int width = image.width();
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        const std::size_t row = runs.size();
        for (int x = 0; x < width;) {
            if (qAlpha(line[x]) < opaque) {
                ++x;
                continue;
            }
            const int start = x;
            while (x < width && qAlpha(line[x]) >= opaque)
                ++x;
            runs.push_back({ std::int16_t(start), std::int16_t(y), std::uint16_t(x - start), 1 });
        }
        const bool same = row > rowBefore && runs.size() - row == row - rowBefore &&
                          std::equal(runs.begin() + std::ptrdiff_t(row), runs.end(),
                                     runs.begin() + std::ptrdiff_t(rowBefore),
                                     [](const xcb_rectangle_t &left, const xcb_rectangle_t &right) {
                                         return left.x == right.x && left.width == right.width;
                                     });
        if (same) {
            for (std::size_t index = rowBefore; index < row; ++index)
                ++runs[index].height;
            runs.resize(row);
        } else {
            rowBefore = row;
        }
    }
    return runs;
}

// Keeps the order of the windows and their place above the forms.
class Stack : public QObject {
public:
    static Stack &The()
    {
        static Stack stack;
        return stack;
    }

    void Add(StageWindow *window)
    {
        if (m_windows.empty()) {
            qApp->installEventFilter(this);
            m_ask.start(kAskForCompositor);
            AskForCompositor();
        }
        m_windows.push_back(window);
    }
    void Remove(StageWindow *window)
    {
        std::erase(m_windows, window);
        if (m_windows.empty()) {
            m_ask.stop();
            if (qApp)
                qApp->removeEventFilter(this);
        }
    }
    void BringToFront(StageWindow *window)
    {
        std::erase(m_windows, window);
        m_windows.push_back(window);
    }
    bool HasCompositor() const { return m_compositor; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool comesForward = event->type() == QEvent::Show || event->type() == QEvent::WindowActivate;
        if (comesForward && watched->isWidgetType() && !m_raising) {
            const auto *widget = static_cast<QWidget *>(watched);
            if (widget->isWindow() && widget->windowType() == Qt::Window) {
                m_raising = true;
                // Later, when the form has its place.
                QTimer::singleShot(0, this, [this] { RaiseAll(); });
            }
        }
        return false;
    }

private:
    Stack()
    {
        m_ask.setTimerType(Qt::VeryCoarseTimer);
        QObject::connect(&m_ask, &QTimer::timeout, this, [this] { AskForCompositor(); });
    }
    void RaiseAll()
    {
        m_raising = false;
        for (StageWindow *window : m_windows) {
            if (window->isVisible())
                window->raise();
        }
    }
    void AskForCompositor()
    {
        xcb_connection_t *connection = Connection();
        const bool before = std::exchange(m_compositor, connection && CompositorRuns(connection));
        if (m_compositor == before)
            return;
        for (StageWindow *window : m_windows)
            window->CompositorHasChanged();
    }

    std::vector<StageWindow *> m_windows;
    QTimer m_ask;
    bool m_compositor = false;
    bool m_raising = false;
};

} // namespace

StageWindow::StageWindow() : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    // The program does not end, and does not stay, because of a window of the stage.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_shapeLater.setSingleShot(true);
    m_shapeLater.callOnTimeout(this, [this] { PictureHasChanged(); });
    Stack::The().Add(this);
}

StageWindow::~StageWindow()
{
    Stack::The().Remove(this);
}

void StageWindow::BringToFront()
{
    Stack::The().BringToFront(this);
    if (isVisible())
        raise();
}

void StageWindow::SetTouchable(bool touchable)
{
    if (m_isTouchable == touchable)
        return;
    m_isTouchable = touchable;
    m_shaped = false;
    PictureHasChanged();
}

// The outline comes last: a first show replaces the server's window by another one, behind its own event.
void StageWindow::setVisible(bool visible)
{
    m_shaped = m_shaped && isVisible();
    QWidget::setVisible(visible);
    PictureHasChanged();
}

QImage StageWindow::BlankPicture() const
{
    const double ratio = devicePixelRatioF();
    QImage picture((QSizeF(size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    return picture;
}

void StageWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, Picture());
}

void StageWindow::PictureHasChanged()
{
    if (isVisible())
        Shape();
}

void StageWindow::Shape()
{
    xcb_connection_t *connection = Connection();
    const QWindow *handle = windowHandle();
    if (!connection || !handle || Picture().isNull())
        return;
    // The widget's own number may be that of a window which has been replaced.
    const auto window = xcb_window_t(handle->winId());
    if (window != m_shapedWindow) {
        m_shapedWindow = window;
        m_shaped = false;
    }
    const bool compositor = Stack::The().HasCompositor();
    const bool changed = !m_shaped || compositor != m_shapedWithCompositor;
    const auto tooSoon = changed ? 0 : kInputShapeInterval - m_sinceShape.elapsed();
    if (compositor && tooSoon > 0) {
        if (!m_shapeLater.isActive())
            m_shapeLater.start(int(tooSoon));
        return;
    }
    m_shapeLater.stop();
    if (changed) {
        const auto other = compositor ? XCB_SHAPE_SK_BOUNDING : XCB_SHAPE_SK_INPUT;
        xcb_shape_mask(connection, XCB_SHAPE_SO_SET, other, window, 0, 0, XCB_PIXMAP_NONE);
    }
    // The picture first: what the new outline uncovers would show what was there before.
    if (!compositor && m_shaped)
        repaint();
    const auto kind = compositor ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
    std::vector<xcb_rectangle_t> runs;
    if (m_isTouchable || !compositor)
        runs = RunsOf(Picture(), compositor ? kTouchable : kSolid);
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED, window, 0, 0,
                         std::uint32_t(runs.size()), runs.data());
    if (!m_isTouchable && !compositor)
        xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_YX_BANDED,
                             window, 0, 0, 0, nullptr);
    xcb_flush(connection);
    m_shaped = true;
    m_shapedWithCompositor = compositor;
    m_sinceShape.start();
}

} // namespace platform
