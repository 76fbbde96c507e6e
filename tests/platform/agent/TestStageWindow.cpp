#include "FigureFixture.h"

#include "platform/agent/StageWindow.h"

#include <QPainter>
#include <QWindow>
#include <QtGui/qguiapplication_platform.h>

#include <algorithm>
#include <cstdlib>
#include <xcb/shape.h>
#include <xcb/xcb.h>

using namespace platform;

namespace {

// From where on a pixel is cut out, and from where on it can be clicked.
constexpr int kSolid = 128;
constexpr int kTouchable = 40;

// A connection of the test's own, as another program has one.
class Server {
public:
    Server() : m_connection(xcb_connect(nullptr, nullptr)) {}
    ~Server()
    {
        // The next one to ask is to find it gone.
        if (m_composing != XCB_ATOM_NONE)
            xcb_set_selection_owner(m_connection, XCB_NONE, m_composing, XCB_CURRENT_TIME);
        Settle(m_connection);
        xcb_disconnect(m_connection);
    }
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    QRegion Outline(const QWidget &window, xcb_shape_sk_t kind) const
    {
        // What the window has asked for is done first.
        Settle(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection());
        const auto number = xcb_window_t(window.windowHandle()->winId());
        const auto cookie = xcb_shape_get_rectangles(m_connection, number, kind);
        xcb_shape_get_rectangles_reply_t *reply =
            xcb_shape_get_rectangles_reply(m_connection, cookie, nullptr);
        QRegion region;
        if (reply) {
            const xcb_rectangle_t *areas = xcb_shape_get_rectangles_rectangles(reply);
            for (int index = 0; index < xcb_shape_get_rectangles_rectangles_length(reply); ++index)
                region += QRect(areas[index].x, areas[index].y, areas[index].width, areas[index].height);
        }
        std::free(reply);
        return region;
    }
    // Whether one window lies over the other.
    bool IsAbove(const QWidget &upper, const QWidget &lower) const
    {
        Settle(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection());
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        xcb_query_tree_reply_t *tree =
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, screen->root), nullptr);
        const xcb_window_t *windows = xcb_query_tree_children(tree); // the lowest first
        const xcb_window_t *end = windows + xcb_query_tree_children_length(tree);
        const auto place = [&](const QWidget &window) {
            return std::find(windows, end, xcb_window_t(window.windowHandle()->winId()));
        };
        const bool above = place(upper) != end && place(lower) != end && place(upper) > place(lower);
        std::free(tree);
        return above;
    }
    // Is taken for a compositor as long as it lives.
    void PretendToCompose()
    {
        const QByteArray name("_NET_WM_CM_S0");
        const auto cookie = xcb_intern_atom(m_connection, 0, std::uint16_t(name.size()), name.constData());
        xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(m_connection, cookie, nullptr);
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const xcb_window_t owner = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, owner, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        m_composing = reply->atom;
        std::free(reply);
        xcb_set_selection_owner(m_connection, owner, m_composing, XCB_CURRENT_TIME);
        Settle(m_connection);
    }

private:
    // An answer tells that the server has done all that came before.
    static void Settle(xcb_connection_t *connection)
    {
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    }

    xcb_connection_t *m_connection;
    xcb_atom_t m_composing = XCB_ATOM_NONE; // what it has taken to be a compositor
};

QRegion Opaque(const QImage &image, int least)
{
    QRegion region;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            int end = x;
            while (end < image.width() && qAlpha(image.pixel(end, y)) >= least)
                ++end;
            if (end > x)
                region += QRect(x, y, end - x, 1);
            x = end;
        }
    }
    return region;
}

QImage Blank(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

class PictureWindow : public StageWindow {
public:
    void Change(const QImage &picture)
    {
        m_picture = picture;
        resize(picture.size());
        PictureHasChanged();
    }

protected:
    const QImage &Picture() const override { return m_picture; }

private:
    QImage m_picture;
};

} // namespace

// How the windows of the stage are cut out along what they show, on a display of the test's own.
class TestStageWindow : public FigureFixture {
    Q_OBJECT

private slots:
    void cleanup()
    {
        if (m_time)
            DropFigure();
    }

    void aWindowIsCutOutAlongItsPicture_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QList<QRect>>("solid");
        QTest::newRow("wide") << QSize(300, 40) << QList<QRect>{ QRect(3, 5, 290, 30) };
        QTest::newRow("narrow") << QSize(40, 300) << QList<QRect>{ QRect(3, 5, 30, 290) };
        QTest::newRow("to the last column and row")
            << QSize(64, 48) << QList<QRect>{ QRect(0, 0, 64, 10), QRect(60, 0, 4, 48) };
        QTest::newRow("two islands beside each other")
            << QSize(100, 50) << QList<QRect>{ QRect(5, 5, 20, 30), QRect(70, 10, 20, 30) };
        QTest::newRow("the same below a gap")
            << QSize(60, 90) << QList<QRect>{ QRect(10, 5, 20, 10), QRect(10, 40, 20, 10) };
        QTest::newRow("a staircase") << QSize(60, 60)
                                     << QList<QRect>{ QRect(0, 0, 10, 60), QRect(0, 20, 30, 40),
                                                      QRect(0, 40, 60, 20) };
    }
    void aWindowIsCutOutAlongItsPicture()
    {
        QFETCH(QSize, size);
        QFETCH(QList<QRect>, solid);
        QImage picture = Blank(size);
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        for (const QRect &area : solid) {
            // A soft edge is seen through, and the cut goes behind it.
            painter.fillRect(area.adjusted(-1, -1, 1, 1), QColor(90, 20, 20, kSolid - 1));
        }
        QRegion expected;
        for (const QRect &area : solid) {
            painter.fillRect(area, QColor(200, 20, 20, kSolid));
            expected += area;
        }
        painter.end();
        PictureWindow window;
        window.Change(picture);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const Server server;
        QCOMPARE(server.Outline(window, XCB_SHAPE_SK_BOUNDING), expected);
    }

    void anotherPictureCutsItAnewAtOnce()
    {
        PictureWindow window;
        const Server server;
        QImage picture = Blank({ 120, 80 });
        window.Change(picture);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (const QRect &area : { QRect(0, 0, 120, 80), QRect(50, 20, 5, 40), QRect(2, 2, 100, 10) }) {
            picture.fill(Qt::transparent);
            QPainter(&picture).fillRect(area, Qt::red);
            window.Change(picture);
            QCOMPARE(server.Outline(window, XCB_SHAPE_SK_BOUNDING), QRegion(area));
        }
    }

    void theOutlineFollowsTheSizeOfTheFigure_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("as drawn") << QSize(128, 128);
        QTest::newRow("doubled") << QSize(256, 256);
        QTest::newRow("wider") << QSize(256, 128);
        QTest::newRow("narrower") << QSize(64, 128);
        QTest::newRow("higher") << QSize(128, 200);
    }
    void theOutlineFollowsTheSizeOfTheFigure()
    {
        QFETCH(QSize, size);
        const Server server;
        MakeFigure();
        m_figure->SetFrame(QRect(200, 200, 128, 128));
        m_figure->Appear();
        QVERIFY(QTest::qWaitForWindowExposed(&m_figure->Window()));
        const QRect before = server.Outline(m_figure->Window(), XCB_SHAPE_SK_BOUNDING).boundingRect();
        QVERIFY(before.width() > 20 && before.height() > 60);

        m_figure->SetFrame(QRect(QPoint(200, 200), size));
        const QRegion outline = server.Outline(m_figure->Window(), XCB_SHAPE_SK_BOUNDING);
        QCOMPARE(m_figure->Picture().size(), size);
        QCOMPARE(outline, Opaque(m_figure->Picture(), kSolid));
        const QRect after = outline.boundingRect();
        const auto follows = [](int now, int then, double scale) { return qAbs(now - then * scale) <= 3; };
        const double across = size.width() / 128.0;
        const double down = size.height() / 128.0;
        QVERIFY2(follows(after.width(), before.width(), across), qPrintable(QDebug::toString(after)));
        QVERIFY2(follows(after.left(), before.left(), across), qPrintable(QDebug::toString(after)));
        QVERIFY2(follows(after.height(), before.height(), down), qPrintable(QDebug::toString(after)));
        QVERIFY2(follows(after.top(), before.top(), down), qPrintable(QDebug::toString(after)));
    }

    void theOutlineFollowsTheMotion()
    {
        const Server server;
        MakeFigure();
        m_figure->SetFrame(QRect(200, 200, 256, 256));
        m_figure->Appear();
        QVERIFY(QTest::qWaitForWindowExposed(&m_figure->Window()));
        const QRegion rest = server.Outline(m_figure->Window(), XCB_SHAPE_SK_BOUNDING);
        m_figure->Perform("Wave", End());
        m_time->Run(milliseconds(1500));
        const QRegion waving = server.Outline(m_figure->Window(), XCB_SHAPE_SK_BOUNDING);
        QCOMPARE(waving, Opaque(m_figure->Picture(), kSolid));
        QVERIFY(waving != rest);
    }

    void whoAppearsStandsInFrontOfTheOthers()
    {
        const Server server;
        MakeFigure();
        PuppetFigure other(m_character, *m_engine, *m_audio, *m_time, *m_options,
                           std::make_unique<support::FakeTicker>(*m_time), 9);
        m_figure->Appear();
        other.Appear();
        QVERIFY(QTest::qWaitForWindowExposed(&other.Window()));
        QVERIFY(server.IsAbove(other.Window(), m_figure->Window()));
        m_figure->Appear();
        QVERIFY(server.IsAbove(m_figure->Window(), other.Window()));
    }

    void figuresKeepAboveAFormThatComesForwardAndKeepTheirOrder()
    {
        const Server server;
        MakeFigure();
        PuppetFigure other(m_character, *m_engine, *m_audio, *m_time, *m_options,
                           std::make_unique<support::FakeTicker>(*m_time), 9);
        other.Appear();
        m_figure->Appear();
        QVERIFY(QTest::qWaitForWindowExposed(&m_figure->Window()));
        QWidget form;
        form.show();
        form.raise();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QTRY_VERIFY(server.IsAbove(other.Window(), form));
        QVERIFY(server.IsAbove(m_figure->Window(), other.Window()));
    }

    void underACompositorOnlyClicksAreCut()
    {
        Server compositor;
        compositor.PretendToCompose();
        QImage picture = Blank({ 120, 80 });
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(QRect(10, 10, 100, 40), QColor(30, 0, 0, kTouchable - 1));
        painter.fillRect(QRect(20, 20, 50, 20), QColor(40, 0, 0, kTouchable));
        painter.end();
        PictureWindow window;
        window.Change(picture);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(compositor.Outline(window, XCB_SHAPE_SK_INPUT), QRegion(20, 20, 50, 20));
        QCOMPARE(compositor.Outline(window, XCB_SHAPE_SK_BOUNDING), QRegion(window.rect()));
    }

    void underACompositorTheLastPictureCountsInTheEnd()
    {
        Server compositor;
        compositor.PretendToCompose();
        PictureWindow window;
        QImage picture = Blank({ 200, 80 });
        QPainter(&picture).fillRect(QRect(0, 0, 40, 40), Qt::red);
        window.Change(picture);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // Pictures come faster than outlines, and behind the last one nothing comes.
        for (int width = 50; width <= 200; width += 50) {
            QPainter(&picture).fillRect(QRect(0, 0, width, 80), Qt::red);
            window.Change(picture);
        }
        QTRY_COMPARE_WITH_TIMEOUT(compositor.Outline(window, XCB_SHAPE_SK_INPUT), QRegion(0, 0, 200, 80),
                                  2000);
    }

    void theOutlineIsFoundAnewWhenTheCompositorComesAndGoes()
    {
        PictureWindow window;
        QImage picture = Blank({ 120, 80 });
        QPainter(&picture).fillRect(QRect(10, 10, 50, 20), Qt::red);
        window.Change(picture);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const Server server;
        const QRegion area(10, 10, 50, 20);
        const QRegion whole(window.rect());
        QCOMPARE(server.Outline(window, XCB_SHAPE_SK_BOUNDING), area);
        {
            Server compositor;
            compositor.PretendToCompose();
            // Though the picture stays as it is.
            QTRY_COMPARE_WITH_TIMEOUT(server.Outline(window, XCB_SHAPE_SK_BOUNDING), whole, 6000);
            QCOMPARE(server.Outline(window, XCB_SHAPE_SK_INPUT), area);
        }
        QTRY_COMPARE_WITH_TIMEOUT(server.Outline(window, XCB_SHAPE_SK_BOUNDING), area, 6000);
    }
};

QTEST_MAIN(TestStageWindow)
#include "TestStageWindow.moc"
