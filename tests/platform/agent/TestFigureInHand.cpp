#include "FigureFixture.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QScreen>
#include <QSystemTrayIcon>

using namespace platform;

// What the user does with a figure: dragging it, its menu, its face in the tray.
class TestFigureInHand : public FigureFixture {
    Q_OBJECT

    QMenu *OpenMenu()
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(20, 20), QPoint(20, 20));
        QCoreApplication::sendEvent(&m_figure->Window(), &event);
        const auto menus = m_figure->Window().findChildren<QMenu *>();
        return menus.isEmpty() ? nullptr : menus.last();
    }
    QStringList MenuTexts()
    {
        QStringList texts;
        QMenu *menu = OpenMenu();
        for (const QAction *action : menu->actions())
            texts << (action->isSeparator() ? QStringLiteral("-")
                      : action->isEnabled() ? action->text()
                                            : QStringLiteral("(%1)").arg(action->text()));
        menu->close();
        QCoreApplication::sendPostedEvents(menu, QEvent::DeferredDelete);
        return texts;
    }

private slots:
    void init() { MakeFigure(); }
    void cleanup() { DropFigure(); }

    void whoGoesWhileHeIsHeldIsLetGo()
    {
        QStringList told;
        m_figure->dragged = [&told](bool begins) { told << (begins ? "begins" : "ends"); };
        m_figure->SetFrame(QRect(100, 100, 128, 128));
        m_figure->Appear();
        Mouse(QEvent::MouseButtonPress, QPoint(160, 160), Qt::LeftButton);
        Mouse(QEvent::MouseMove, QPoint(260, 120), Qt::LeftButton);
        m_figure->Disappear(false);
        m_time->Run(milliseconds(20));
        QCOMPARE(told, (QStringList{ "begins", "ends" }));
    }

    void theUserDragsHim()
    {
        QStringList told;
        m_figure->dragged = [&told](bool begins) { told << (begins ? "begins" : "ends"); };
        m_figure->SetFrame(QRect(100, 100, 128, 128));
        m_figure->Appear();
        CharacterWindow &window = m_figure->Window();
        Mouse(QEvent::MouseButtonPress, QPoint(160, 160), Qt::LeftButton);
        Mouse(QEvent::MouseMove, QPoint(161, 160), Qt::LeftButton);
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(100, 100)); // a tremble
        Mouse(QEvent::MouseMove, QPoint(260, 120), Qt::LeftButton);
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(200, 60));
        QCOMPARE(window.pos(), QPoint(200, 60));
        QVERIFY(told.isEmpty()); // the loop tells
        m_time->Run(milliseconds(20));
        QCOMPARE(told, QStringList{ "begins" });
        Mouse(QEvent::MouseButtonRelease, QPoint(260, 120), Qt::LeftButton);
        m_time->Run(milliseconds(20));
        QCOMPARE(told, (QStringList{ "begins", "ends" }));
        Mouse(QEvent::MouseMove, QPoint(300, 120), Qt::NoButton);
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(200, 60));
    }

    void aSlideWaitsForTheUsersHandAndGoesOnFromThere()
    {
        m_figure->SetFrame(QRect(100, 100, 128, 128));
        m_figure->Appear();
        m_figure->Slide(QPoint(500, 100), milliseconds(1000), End());
        m_time->Run(milliseconds(300));
        const QPoint at = m_figure->Frame().topLeft();
        Mouse(QEvent::MouseButtonPress, at + QPoint(60, 60), Qt::LeftButton);
        Mouse(QEvent::MouseMove, at + QPoint(60, 160), Qt::LeftButton);
        m_time->Run(milliseconds(3000));
        QCOMPARE(m_number, kNotEnded);
        QCOMPARE(m_figure->Frame().topLeft(), at + QPoint(0, 100));
        Mouse(QEvent::MouseButtonRelease, at + QPoint(60, 160), Qt::LeftButton);
        m_time->Run(milliseconds(40));
        const QPoint soon = m_figure->Frame().topLeft();
        QVERIFY2((soon - at - QPoint(0, 100)).manhattanLength() < 40, "he jumps back on his way");
        m_time->Run(milliseconds(600));
        QCOMPARE(m_number, kNotEnded); // of the second, 0.7 were left
        m_time->Run(milliseconds(100));
        QCOMPARE(m_number, 0);
        QCOMPARE(m_figure->Frame().topLeft(), QPoint(500, 100));
    }

    void theMenuHidesHimAndHisFaceGoesWhenHeIsBack()
    {
        QList<bool> asked;
        m_figure->hideAsked = [&asked](bool hide) { asked << hide; };
        m_figure->Appear();
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(20, 20), QPoint(20, 20));
        QCoreApplication::sendEvent(&m_figure->Window(), &event);
        auto *menu = m_figure->Window().findChild<QMenu *>();
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().front()->text(), QStringLiteral("&Hide"));
        menu->actions().front()->trigger();
        QVERIFY(asked.isEmpty());
        m_time->Run(milliseconds(20));
        QCOMPARE(asked, QList<bool>{ true });
        menu->close();
        m_figure->Disappear(true);
        QVERIFY(m_figure->Tray());
        m_figure->Appear();
        QVERIFY(!m_figure->Tray());
    }

    void theMenuHasSeparatorsOnlyBetweenGroupsThatAreThere()
    {
        QStringList chosen;
        std::vector<MenuGroup> groups;
        m_figure->menuAsked = [&groups] { return groups; };
        m_figure->Appear();
        QCOMPARE(MenuTexts(), QStringList{ "&Hide" });
        groups = { {}, {} };
        QCOMPARE(MenuTexts(), QStringList{ "&Hide" });
        groups = { {}, { { "&Show Genie", true, [] {} } } };
        QCOMPARE(MenuTexts(), (QStringList{ "&Hide", "-", "&Show Genie" }));
        groups = { { { "&Dance", true, [&] { chosen << "dance"; } }, { "Sing", false, [] {} } },
                   { { "&Show Genie", true, [] {} } } };
        QCOMPARE(MenuTexts(), (QStringList{ "&Hide", "-", "&Dance", "(Sing)", "-", "&Show Genie" }));
        // It is fixed while it is open.
        auto *menu = OpenMenu();
        groups.clear();
        QCOMPARE(menu->actions().size(), qsizetype(6));
        menu->actions()[2]->trigger();
        QCOMPARE(chosen, QStringList{ "dance" });
        menu->close();
    }

    void withoutATrayHisFaceStaysWhereHeStoodAndBringsHimBack()
    {
        QVERIFY(!QSystemTrayIcon::isSystemTrayAvailable());
        QList<bool> asked;
        m_figure->hideAsked = [&asked](bool hide) { asked << hide; };
        m_figure->SetFrame(QRect(300, 200, 128, 128));
        m_figure->Appear();
        m_figure->Disappear(true);
        const FaceBadge *badge = m_figure->Tray()->Badge();
        QVERIFY(badge && badge->isVisible());
        QCOMPARE(badge->accessibleName(), QStringLiteral("Show Merlin"));
        QVERIFY(QRect(300, 200, 128, 128).contains(badge->geometry()));
        QTest::mouseClick(const_cast<FaceBadge *>(badge), Qt::LeftButton);
        m_time->Run(milliseconds(20));
        QCOMPARE(asked, QList<bool>{ false });
        m_figure->SetFrame(QRect(-90, 5000, 128, 128));
        m_figure->Disappear(true);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(screen.contains(m_figure->Tray()->Badge()->geometry()));
    }

    void whoGoesByHimselfLeavesNoTrace()
    {
        m_figure->Appear();
        m_figure->Disappear(false);
        QVERIFY(!m_figure->Tray());
    }
};

QTEST_MAIN(TestFigureInHand)
#include "TestFigureInHand.moc"
