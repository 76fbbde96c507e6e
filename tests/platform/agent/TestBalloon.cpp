#include "platform/agent/BalloonPlace.h"
#include "platform/agent/BalloonText.h"
#include "platform/agent/BalloonWindow.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextEdit>

using namespace platform;

namespace {

// A figure of 256 units whose frame stands there.
BalloonOwner OwnerAt(int x, int y)
{
    return {
        QRect(x + 30, y + 10, 196, 244), QRect(x + 84, y + 62, 88, 84), QPoint(x + 128, y + 124), {}, {}
    };
}

} // namespace

class TestBalloon : public QObject {
    Q_OBJECT

private slots:
    void balloonsStandWhereTheyCanBeRead_data()
    {
        QTest::addColumn<QPoint>("frame");
        QTest::addColumn<QSize>("bubble");
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<int>("side");
        using Side = BalloonPlace::Side;
        const QRect screen(0, 0, 1024, 768);
        const QSize ordinary(300, 120);
        const auto row = [&](const char *name, QPoint frame, QSize bubble, const QRect &on, Side side) {
            QTest::newRow(name) << frame << bubble << on << int(side);
        };
        row("middle", { 400, 400 }, ordinary, screen, Side::Above);
        row("on the stage, left", { 50, 300 }, ordinary, screen, Side::Above);
        row("at the left edge", { 0, 400 }, ordinary, screen, Side::Above);
        row("beyond the left edge", { -40, 400 }, ordinary, screen, Side::Above);
        row("at the right edge", { 768, 400 }, ordinary, screen, Side::Above);
        row("at the upper edge", { 400, 0 }, ordinary, screen, Side::Left);
        row("upper left corner", { 0, 0 }, ordinary, screen, Side::Right);
        row("upper right corner", { 768, 0 }, ordinary, screen, Side::Left);
        row("lower left corner", { 0, 512 }, ordinary, screen, Side::Above);
        row("lower right corner", { 768, 512 }, ordinary, screen, Side::Above);
        row("a little room above", { 400, 130 }, ordinary, screen, Side::Above);
        row("above the face only", { 400, 80 }, ordinary, screen, Side::Left);
        row("above the face only, narrow screen", { 22, 80 }, { 240, 100 }, { 0, 0, 300, 340 }, Side::Above);
        row("half beyond the upper edge", { 300, -130 }, ordinary, screen, Side::Right);
        row("beyond the lower edge", { 400, 900 }, ordinary, screen, Side::Above);
        row("far beyond the right edge", { 3000, 300 }, ordinary, screen, Side::Above);
        row("wide, small screen", { 272, 0 }, { 380, 180 }, { 0, 0, 800, 600 }, Side::Below);
        row("wide, at 1024", { 272, 10 }, { 380, 180 }, screen, Side::Right);
        row("a second screen", { 1400, 300 }, ordinary, { 1024, 0, 1280, 1024 }, Side::Above);
        row("a second screen to the left", { -900, 0 }, ordinary, { -1280, 0, 1280, 1024 }, Side::Right);
    }
    void balloonsStandWhereTheyCanBeRead()
    {
        QFETCH(QPoint, frame);
        QFETCH(QSize, bubble);
        QFETCH(QRect, screen);
        QFETCH(int, side);
        const BalloonOwner owner = OwnerAt(frame.x(), frame.y());
        const BalloonPlace place = PlaceBalloon(bubble, owner, screen);
        QCOMPARE(place.bubble.size(), bubble);
        QVERIFY2(screen.contains(place.bubble), qPrintable(QDebug::toString(place.bubble)));
        QVERIFY2(!place.bubble.intersects(owner.face), qPrintable(QDebug::toString(place.bubble)));
        QCOMPARE(int(place.side), side);
    }

    void aBalloonBelongsOnTheScreenOfItsFigureOrTheNearest_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<int>("screen");
        QTest::newRow("on the first") << QPoint(500, 300) << 0;
        QTest::newRow("on the second") << QPoint(1400, 300) << 1;
        QTest::newRow("last column of the first") << QPoint(1023, 300) << 0;
        QTest::newRow("beyond the left edge") << QPoint(-90, 300) << 0;
        QTest::newRow("beyond the right edge") << QPoint(2500, 300) << 1;
        QTest::newRow("below the second, that hangs lower") << QPoint(1500, 2000) << 1;
        QTest::newRow("above the second") << QPoint(1500, -200) << 1;
        QTest::newRow("in the hole below the first") << QPoint(300, 900) << 0;
    }
    void aBalloonBelongsOnTheScreenOfItsFigureOrTheNearest()
    {
        QFETCH(QPoint, at);
        QFETCH(int, screen);
        const std::vector<QRect> screens{ QRect(0, 0, 1024, 768), QRect(1024, 100, 1280, 1024) };
        QCOMPARE(NearestScreen(at, screens), screens[std::size_t(screen)]);
    }

    void otherFacesAreLeftFreeWhenThereIsAChoice()
    {
        using Side = BalloonPlace::Side;
        const QRect screen(0, 0, 1024, 768);
        const QSize bubble(300, 120);
        BalloonOwner owner = OwnerAt(40, 20);
        QCOMPARE(int(PlaceBalloon(bubble, owner, screen).side), int(Side::Right));
        owner.others = { OwnerAt(336, 20).face };
        const BalloonPlace place = PlaceBalloon(bubble, owner, screen);
        QCOMPARE(int(place.side), int(Side::Below));
        QVERIFY(!place.bubble.intersects(owner.others.front()));
        // Where there is none, the owner's own face counts.
        owner.others = { screen };
        QCOMPARE(int(PlaceBalloon(bubble, owner, screen).side), int(Side::Right));
    }

    void controlsAreLeftFreeWhenThatCostsNoFace()
    {
        using Side = BalloonPlace::Side;
        const QRect screen(0, 0, 800, 600);
        const QSize bubble(300, 120);
        BalloonOwner owner = OwnerAt(500, 320);
        QCOMPARE(int(PlaceBalloon(bubble, owner, screen).side), int(Side::Above));
        owner.controls = { QRect(564, 220, 228, 40), QRect(564, 280, 228, 40) };
        QCOMPARE(int(PlaceBalloon(bubble, owner, screen).side), int(Side::Left));
        // Somebody else's face counts for more, and so does the side where the balloon stands already.
        owner.others = { OwnerAt(240, 320).face };
        QVERIFY(!PlaceBalloon(bubble, owner, screen).bubble.intersects(owner.others.front()));
        owner.controls.emplace_back(400, 470, 400, 130);
        QCOMPARE(int(PlaceBalloon(bubble, owner, screen).side), int(Side::Above));
        owner.others.clear();
        QCOMPARE(int(PlaceBalloon(bubble, owner, screen, Side::Above).side), int(Side::Above));
    }

    void aBalloonMovesAsideForAControl()
    {
        using Side = BalloonPlace::Side;
        const QRect screen(0, 0, 800, 600);
        const QSize bubble(320, 120);
        BalloonOwner owner = OwnerAt(250, 170);
        owner.controls = { QRect(515, 80, 270, 160) };
        const BalloonPlace place = PlaceBalloon(bubble, owner, screen);
        QCOMPARE(int(place.side), int(Side::Above));
        QCOMPARE(place.bubble.right(), 514);
        QCOMPARE(place.bubble.bottom(), PlaceBalloon(bubble, OwnerAt(250, 170), screen).bubble.bottom());
        // Not so far that the tail would lose its figure.
        owner.controls = { QRect(380, 80, 270, 160) };
        const BalloonPlace far = PlaceBalloon(bubble, owner, screen);
        QVERIFY(far.side != Side::Above);
        QVERIFY(!far.bubble.intersects(owner.controls.front()));
    }

    void aBalloonRatherHidesItsFiguresBodyThanAControl()
    {
        const QRect screen(0, 0, 800, 600);
        const QSize bubble(320, 104);
        BalloonOwner owner = OwnerAt(433, 0);
        // Boxes to the left of the wizard, a list below him.
        owner.controls = { QRect(206, 74, 264, 38), QRect(206, 128, 264, 38), QRect(206, 172, 264, 38),
                           QRect(488, 262, 290, 96) };
        const BalloonPlace place = PlaceBalloon(bubble, owner, screen);
        for (const QRect &control : owner.controls)
            QVERIFY2(!place.bubble.intersects(control), qPrintable(QDebug::toString(place.bubble)));
        QVERIFY(!place.bubble.intersects(owner.face));
        QVERIFY(place.bubble.intersects(owner.body));
        // Without the list there is room below him.
        owner.controls.pop_back();
        QVERIFY(!PlaceBalloon(bubble, owner, screen).bubble.intersects(owner.body));
    }

    void aBalloonBesideItsFigureMovesUpOrDownForAControl()
    {
        using Side = BalloonPlace::Side;
        BalloonOwner owner = OwnerAt(400, 0);
        const QSize bubble(300, 60);
        const QRect screen(0, 0, 1024, 768);
        const QRect before = PlaceBalloon(bubble, owner, screen).bubble;
        owner.controls = { QRect(0, before.center().y(), 1024, 40) };
        const BalloonPlace place = PlaceBalloon(bubble, owner, screen);
        QCOMPARE(int(place.side), int(Side::Left));
        QCOMPARE(place.bubble.bottom(), owner.controls.front().top() - 1);
        QCOMPARE(place.bubble.right(), before.right());
    }

    void whereNothingIsFreeTheLeastIsCovered()
    {
        const QRect screen(0, 0, 800, 600);
        BalloonOwner owner = OwnerAt(433, 0);
        owner.controls = { QRect(0, 0, 470, 600), QRect(470, 150, 330, 40) };
        const QRect bubble = PlaceBalloon(QSize(320, 104), owner, screen).bubble;
        owner.controls.pop_back();
        QVERIFY(!bubble.intersects(owner.controls.front()));
    }

    void textOfTheProgramIsLeftFree()
    {
        QWidget form;
        form.setGeometry(0, 0, 800, 600);
        QTextEdit board(&form);
        board.setGeometry(420, 120, 200, 60);
        board.setReadOnly(true);
        form.show();
        const QRect place(board.mapToGlobal(QPoint(0, 0)), board.size());
        for (const QString &scores : { QStringLiteral("Ann 1 out of 1"), QString() }) {
            board.setPlainText(scores);
            BalloonWindow balloon;
            balloon.Follow(OwnerAt(400, 200));
            balloon.Begin(QString());
            balloon.Append(QStringLiteral("When Genie and Peedy arrive"), false);
            QCOMPARE(balloon.Bubble().intersects(place), scores.isEmpty());
        }
    }

    void onlyTheRowsOfAListAreLeftFree()
    {
        QWidget form;
        form.setGeometry(0, 0, 800, 600);
        QListWidget list(&form);
        list.setGeometry(250, 100, 500, 400);
        form.show();
        const auto bubble = [] {
            BalloonWindow balloon;
            balloon.Follow(OwnerAt(400, 270));
            balloon.Begin(QString());
            balloon.Append(QStringLiteral("moon"), false);
            return balloon.Bubble();
        };
        const QRect above = bubble();
        list.addItems({ QStringLiteral("sun"), QStringLiteral("star") });
        QCOMPARE(bubble(), above);
        for (int word = 0; word < 12; ++word)
            list.addItem(QStringLiteral("word"));
        QVERIFY(bubble() != above);
        list.setEnabled(false);
        QCOMPARE(bubble(), above);
    }

    void aBoxThatWaitsIsLeftFreeAltogether()
    {
        QDialog box;
        box.setModal(true);
        box.setGeometry(380, 120, 300, 100);
        for (const bool open : { false, true }) {
            box.setVisible(open);
            BalloonWindow balloon;
            balloon.Follow(OwnerAt(400, 200));
            balloon.Begin(QString());
            balloon.Append(QStringLiteral("moon"), false);
            QCOMPARE(balloon.Bubble().intersects(box.frameGeometry()), !open);
        }
    }

    void liveControlsOfTheProgramAreLeftFree()
    {
        QWidget form;
        form.setGeometry(0, 0, 800, 600);
        QPushButton button(QStringLiteral("Play"), &form);
        button.setGeometry(420, 120, 200, 60);
        form.show();
        const QRect place(button.mapToGlobal(QPoint(0, 0)), button.size());
        for (const bool live : { true, false }) {
            button.setEnabled(live);
            BalloonWindow balloon;
            balloon.Follow(OwnerAt(400, 200));
            const QString line = QStringLiteral("When Genie and Peedy arrive we'll be ready");
            balloon.Begin(line);
            balloon.Append(line, false);
            QCOMPARE(balloon.Bubble().intersects(place), !live);
            const QRect before = balloon.Bubble();
            button.setEnabled(true);
            balloon.Follow(OwnerAt(400, 200));
            QCOMPARE(balloon.Bubble(), before);
        }
    }

    void aBalloonKeepsItsWordsUntilTheNextLineIsHeard()
    {
        BalloonWindow balloon;
        balloon.Follow(OwnerAt(300, 300));
        balloon.Begin(QStringLiteral("What was that terrible noise!"));
        balloon.Append(QStringLiteral("What was that terrible noise!"), false);
        const QRect before = balloon.Bubble();
        balloon.Begin(QStringLiteral("I must be dreaming, I just dreamed I heard a nasty blue wizard"));
        balloon.Follow(OwnerAt(320, 310));
        QCOMPARE(balloon.ShownText(), QStringLiteral("What was that terrible noise!"));
        QCOMPARE(balloon.Bubble(), before.translated(20, 10));
        balloon.Append(QStringLiteral("I"), false);
        QCOMPARE(balloon.ShownText(), QStringLiteral("I"));
        QVERIFY(balloon.Bubble().width() > before.width());
    }

    void whatHasBeenSaidGivesWayToWhatIsSaid()
    {
        const auto say = [](BalloonWindow &balloon, const QPoint &at) {
            balloon.Follow(OwnerAt(at.x(), at.y()));
            const QString line = QStringLiteral("Ann, you scored 1 out of 1.");
            balloon.Begin(line);
            balloon.Append(line, false);
        };
        BalloonWindow merlin, genie, peedy;
        say(merlin, { 10, 300 });
        say(genie, { 130, 300 });
        QVERIFY(merlin.Bubble().intersects(genie.Bubble()));
        // Who is still speaking is not silenced.
        QVERIFY(merlin.isVisible());
        merlin.GiveWay();
        genie.GiveWay();
        say(peedy, { 500, 300 });
        QVERIFY(!peedy.Bubble().intersects(merlin.Bubble()));
        QVERIFY(merlin.isVisible());
        say(genie, { 130, 300 });
        QVERIFY(!merlin.isVisible());
        QVERIFY(genie.isVisible());
        QVERIFY(peedy.isVisible());
    }

    void aBalloonKeepsItsSideAsLongAsItCan()
    {
        using Side = BalloonPlace::Side;
        const QRect screen(0, 0, 1024, 768);
        const QSize bubble(300, 120);
        QCOMPARE(int(PlaceBalloon(bubble, OwnerAt(100, 400), screen).side), int(Side::Above));
        QCOMPARE(int(PlaceBalloon(bubble, OwnerAt(100, 400), screen, Side::Right).side), int(Side::Right));
        QCOMPARE(int(PlaceBalloon(bubble, OwnerAt(768, 400), screen, Side::Right).side), int(Side::Above));
    }

    void noPlaceOfTheScreenMakesABalloonCoverTheFace()
    {
        for (const QRect &screen :
             { QRect(0, 0, 800, 600), QRect(0, 0, 1024, 768), QRect(0, 24, 1536, 840) }) {
            for (const QSize &bubble :
                 { QSize(90, 48), QSize(300, 120), QSize(370, 170), LargestBubble(20) }) {
                for (int x = -200; x < screen.width() + 100; x += 37) {
                    for (int y = -200; y < screen.height() + 100; y += 31) {
                        const BalloonOwner owner = OwnerAt(x, y);
                        const BalloonPlace place = PlaceBalloon(bubble, owner, screen);
                        QVERIFY(screen.contains(place.bubble));
                        QVERIFY2(!place.bubble.intersects(owner.face),
                                 qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
                    }
                }
            }
        }
    }

    void theLargestTextLeavesTheFaceFreeWhereFiguresStand()
    {
        const QSize bubble = LargestBubble(32);
        QVERIFY(bubble.height() > 200);
        for (const QRect &screen : { QRect(0, 0, 800, 600), QRect(0, 0, 1024, 768) }) {
            for (int x = 0; x <= screen.width() - 256; x += 37) {
                for (int y = 300; y <= screen.height() - 256; y += 11) {
                    const BalloonOwner owner = OwnerAt(x, y);
                    const BalloonPlace place = PlaceBalloon(bubble, owner, screen);
                    QVERIFY(screen.contains(place.bubble));
                    QVERIFY2(!place.bubble.intersects(owner.face),
                             qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
                }
            }
        }
    }

    void aBalloonThatFitsNowhereStaysOnTheScreen()
    {
        const QRect screen(0, 0, 300, 260);
        const BalloonPlace place = PlaceBalloon(QSize(290, 250), OwnerAt(20, 0), screen);
        QVERIFY(screen.contains(place.bubble));
    }

    void linesHaveAboutThirtyTwoCharacters()
    {
        BalloonText text(BalloonWindow().font());
        for (int word = 0; word < 60; ++word)
            text.Append(QStringLiteral("child%1").arg(word), false);
        for (const QString &line : text.Lines().mid(0, text.Lines().size() - 1))
            QVERIFY2(line.size() >= 20 && line.size() <= 42, qPrintable(line));
        QCOMPARE(text.Lines().join(' '), text.Whole());
    }

    void olderLinesGo()
    {
        BalloonText text(BalloonWindow().font());
        for (int word = 0; word < 100; ++word)
            text.Append(QStringLiteral("word%1").arg(word), false);
        QVERIFY(text.Lines().size() > BalloonText::kLinesShown);
        QCOMPARE(text.ShownLines().size(), qsizetype(BalloonText::kLinesShown));
        QVERIFY(text.ShownLines().last().endsWith("word99"));
        QVERIFY(!text.ShownLines().join(' ').contains("word0 "));
    }

    void joinedPiecesStandWithoutABlank()
    {
        BalloonText text(BalloonWindow().font());
        text.Append("Is it", false);
        text.Append("***", false);
        text.Append("?", true);
        QCOMPARE(text.Whole(), QStringLiteral("Is it ***?"));
        QCOMPARE(text.Lines(), QStringList{ "Is it ***?" });
    }

    void textIsPlain_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("ampersand") << "salt & pepper"
                                   << "salt & pepper";
        QTest::newRow("entity") << "&lt;&amp;"
                                << "&lt;&amp;";
        QTest::newRow("markup") << "<b>bold</b><img src=x>"
                                << "<b>bold</b><img src=x>";
        QTest::newRow("percent") << "100 %1 %s"
                                 << "100 %1 %s";
        QTest::newRow("line ends") << "one\r\ntwo\tthree"
                                   << "one two three";
        QTest::newRow("nothing") << ""
                                 << "";
        QTest::newRow("blanks") << "   "
                                << "";
        QTest::newRow("a null") << QString(QChar(0)) + "a"
                                << "a";
    }
    void textIsPlain()
    {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        BalloonWindow balloon;
        balloon.Follow(OwnerAt(300, 300));
        balloon.Begin(text);
        balloon.Append(text, false);
        QCOMPARE(balloon.ShownText(), shown);
        QCOMPARE(balloon.accessibleName(), shown);
        QCOMPARE(balloon.isVisible(), !shown.isEmpty());
    }

    void markupIsPaintedAsItIsWritten()
    {
        // The picture of a tag differs from that of what the tag would make of it.
        QCOMPARE(Inked("<b>x</b>") > Inked("x") + 100, true);
        QCOMPARE(Inked("&amp;") > Inked("&") + 50, true);
    }

    void aBalloonGrowsWithItsWordsAndStaysOnTheScreen()
    {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        BalloonWindow balloon;
        BalloonText whole(balloon.font());
        for (int word = 0; word < 40; ++word)
            whole.Append("letters", false);
        balloon.Follow(OwnerAt(200, 400));
        balloon.Begin(whole.Whole());
        QVERIFY(!balloon.isVisible());
        balloon.Append("letters", false);
        QVERIFY(balloon.isVisible());
        const QRect first = balloon.Bubble();
        for (int word = 1; word < 40; ++word) {
            balloon.Append("letters", false);
            QVERIFY(screen.contains(balloon.Bubble()));
            QCOMPARE(balloon.Bubble().bottom(), first.bottom());
            QCOMPARE(balloon.Bubble().width(), first.width());
        }
        QVERIFY(balloon.Bubble().height() > 3 * first.height() / 2);
        balloon.Follow(OwnerAt(300, 420));
        QCOMPARE(balloon.Bubble().bottom(), first.bottom() + 20);
        balloon.Empty();
        QVERIFY(!balloon.isVisible());
        QCOMPARE(balloon.accessibleName(), QString());
    }

    void aWordOfTenThousandLettersNeitherHangsNorLeavesTheScreen()
    {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QString word(10000, QLatin1Char('m'));
        QElapsedTimer timer;
        timer.start();
        BalloonWindow balloon;
        BalloonText whole(balloon.font());
        whole.Append(word, false);
        balloon.Follow(OwnerAt(0, 0));
        balloon.Begin(whole.Whole());
        balloon.Append(word, false);
        QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(screen.contains(balloon.Bubble()));
        QVERIFY(!balloon.Bubble().intersects(OwnerAt(0, 0).face));
        QCOMPARE(whole.Lines().join(QString()), word);
        for (const QString &line : whole.Lines())
            QVERIFY(line.size() <= 60);
    }

    void brokenWordsKeepTheirCharactersWhole()
    {
        const QString family =
            QString::fromUtf8("\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x91\xa7"); // one character of five units
        BalloonText text(BalloonWindow().font());
        text.Append(family.repeated(200), false);
        QVERIFY(text.Lines().size() > 3);
        for (const QString &line : text.Lines())
            QCOMPARE(line.size() % family.size(), qsizetype(0));
    }

private:
    // Six lines of full width.
    static QSize LargestBubble(int typeSize)
    {
        BalloonWindow balloon;
        balloon.SetTypeSize(typeSize);
        balloon.Follow(OwnerAt(300, 300));
        BalloonText whole(balloon.font());
        for (int word = 0; word < 60; ++word)
            whole.Append("balloons", false);
        balloon.Begin(whole.Whole());
        balloon.Append(whole.Whole(), false);
        return balloon.Bubble().size();
    }

    static int Inked(const QString &text)
    {
        BalloonWindow balloon;
        balloon.Follow(OwnerAt(300, 300));
        balloon.Begin(QStringLiteral("mmmmmmmmmmmm")); // all bubbles are of one width
        balloon.Append(text, false);
        const QImage image = balloon.grab().toImage();
        int dark = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                dark += qAlpha(pixel) > 200 && qGray(pixel) < 60;
            }
        }
        return dark;
    }
};

QTEST_MAIN(TestBalloon)
#include "TestBalloon.moc"
