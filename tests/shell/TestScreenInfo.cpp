#include "platform/Error.h"
#include "shell/ScreenInfo.h"
#include "support/Desk.h"

#include <QTest>

using namespace tumblewick;
using support::Desk;

namespace {

platform::LogicalFont Font(const QByteArray &face)
{
    platform::LogicalFont font;
    font.height = 16;
    font.width = 8;
    font.escapement = 1;
    font.orientation = 2;
    font.weight = 700;
    font.italic = 3;
    font.underline = 4;
    font.strikeOut = 5;
    font.charSet = 6;
    font.outPrecision = 7;
    font.clipPrecision = 9;
    font.quality = 10;
    font.pitchAndFamily = 11;
    std::copy(face.begin(), face.end(), font.faceName.begin());
    return font;
}

} // namespace

// What the program knows of the display and the fonts.
class TestScreenInfo : public QObject {
    Q_OBJECT

private slots:
    void aModeIsDescribed_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<int>("frequency");
        QTest::addColumn<QString>("text");
        QTest::newRow("32") << 32 << 60 << "800 by 600 pixels,  True Color, 60Hz";
        QTest::newRow("24") << 24 << 75 << "800 by 600 pixels,  16777216 colors, 75Hz";
        QTest::newRow("16") << 16 << 60 << "800 by 600 pixels,  65536 colors, 60Hz";
        QTest::newRow("8") << 8 << 60 << "800 by 600 pixels,  256 colors, 60Hz";
        QTest::newRow("4") << 4 << 0 << "800 by 600 pixels,  16 colors, 0Hz";
        QTest::newRow("1") << 1 << 0 << "800 by 600 pixels,  2 colors, 0Hz";
    }
    void aModeIsDescribed()
    {
        QFETCH(int, depth);
        QFETCH(int, frequency);
        Desk desk;
        desk.display.Run({ depth, 800, 600, 0, frequency });
        QTEST(ScreenInfo().DisplayModesText(0), "text");
    }

    void anIndexThatThereIsNotHasNoText()
    {
        Desk desk;
        const ScreenInfo info;
        QCOMPARE(int(info.DisplayModesCount()), 2);
        QCOMPARE(info.DisplayModesText(-1), QString());
        QCOMPARE(info.DisplayModesText(2), QString());
    }

    void theRunningModeIsFoundByAllItsFigures_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("frequency");
        QTest::addColumn<int>("index");
        QTest::newRow("first") << 16 << 800 << 600 << 60 << 0;
        QTest::newRow("the first of two alike") << 32 << 1024 << 768 << 60 << 1;
        QTest::newRow("another depth") << 32 << 800 << 600 << 60 << -1;
        QTest::newRow("another width") << 16 << 801 << 600 << 60 << -1;
        QTest::newRow("another height") << 16 << 800 << 601 << 60 << -1;
        QTest::newRow("another frequency") << 16 << 800 << 600 << 75 << -1;
    }
    void theRunningModeIsFoundByAllItsFigures()
    {
        QFETCH(int, depth);
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, frequency);
        Desk desk;
        desk.display.modes.push_back({ 32, 1024, 768, 0, 60 });
        desk.display.current = platform::DisplayMode{ depth, width, height, 0, frequency };
        QTEST(int(ScreenInfo().CurrentDisplayMode()), "index");
    }

    void figuresOfTheDisplay()
    {
        Desk desk;
        desk.display.dotsPerInchY = 120;
        const ScreenInfo info;
        QCOMPARE(int(info.BitsPerPixel()), 32);
        QCOMPARE(int(info.VerticalRefresh()), 60);
        QCOMPARE(info.WidthInPixels(), 1024);
        QCOMPARE(info.HeightInPixels(), 768);
        QCOMPARE(info.TwipsPerPixelX(), 15.0f);
        QCOMPARE(info.TwipsPerPixelY(), 12.0f);
        QCOMPARE(info.Width(), 15360.0f);
        QCOMPARE(info.Height(), 9216.0f);
    }

    void withoutInchesThereAreNoTwips()
    {
        Desk desk;
        desk.display.dotsPerInchX = 0;
        const ScreenInfo info;
        QCOMPARE(info.TwipsPerPixelX(), 0.0f);
        QCOMPARE(info.Width(), 0.0f);
    }

    void withoutADisplayAllIsZero()
    {
        Desk desk;
        desk.display.current.reset();
        desk.display.fonts.push_back({ Font("Any"), 4 });
        const ScreenInfo info;
        QCOMPARE(int(info.DisplayModesCount()), 0);
        QCOMPARE(int(info.FontCount()), 0);
        QCOMPARE(int(info.BitsPerPixel()), 0);
        QCOMPARE(info.WidthInPixels(), 0);
        QCOMPARE(info.TwipsPerPixelX(), 0.0f);
        QCOMPARE(int(info.CurrentDisplayMode()), 0);
        QCOMPARE(info.DisplayModesText(0), QString());
    }

    void fieldsOfAFont()
    {
        Desk desk;
        desk.display.fonts = { { Font("Other"), 1 }, { Font("Caf\xe9 Sans"), 4 } };
        const ScreenInfo info;
        QCOMPARE(int(info.FontCount()), 2);
        const QVariantList expected = { 16, 8, 1, 2, 700, 3,  4,
                                        5,  6, 7, 9, 10,  11, QString::fromUtf8("Café Sans"),
                                        4 };
        for (int selector = 0; selector < expected.size(); ++selector)
            QCOMPARE(info.FontInfo(1, selector).toString(), expected.at(selector).toString());
        QVERIFY(!info.FontInfo(1, 15).isValid());
        QVERIFY(!info.FontInfo(1, 1000).isValid());
        QCOMPARE(info.Fonts(0), QString("Other"));
        QVERIFY_EXCEPTION_THROWN(info.FontInfo(2, 0), platform::Error);
        QVERIFY_EXCEPTION_THROWN(info.Fonts(-1), platform::Error);
    }

    void aFaceWithoutAnEndIsTakenWhole()
    {
        Desk desk;
        desk.display.fonts = { { Font(QByteArray(32, 'x')), 1 } };
        QCOMPARE(ScreenInfo().Fonts(0), QString(32, 'x'));
    }

    void moreFontsThanCanBeCountedStartAnew()
    {
        Desk desk;
        for (int font = 0; font < 32769; ++font)
            desk.display.fonts.push_back({ Font(QByteArray::number(font)), 1 });
        const ScreenInfo info;
        // The font beyond the last number set the count to 0, which ended the enumeration.
        QCOMPARE(int(info.FontCount()), 0);
    }

    void aChangeOfModeIsToldOfWhenItFails_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("box");
        const QString failed = "Unable to change to the selected mode.";
        QTest::newRow("done") << 0 << QString();
        QTest::newRow("restart") << 1
                                 << "The new display settings won't take effect until you restart Windows.";
        QTest::newRow("failed") << -1 << failed;
        QTest::newRow("bad mode") << -2 << failed;
        QTest::newRow("bad parameter") << -5 << failed;
        QTest::newRow("an unknown failure") << -6 << QString();
        QTest::newRow("an unknown success") << 2 << QString();
    }
    void aChangeOfModeIsToldOfWhenItFails()
    {
        QFETCH(int, answer);
        QFETCH(QString, box);
        Desk desk;
        desk.display.answer = answer;
        desk.display.modes = { { 16, 800, 600, 2, 60 }, { 32, 1024, 768, 4, 75 } }; // all figures differ
        ScreenInfo info;
        QCOMPARE(info.SetDisplayMode(0), answer);
        if (!box.isEmpty())
            desk.boxes.Expect(box);
        QCOMPARE(info.ChangeDisplayMode(1), answer);
        QVERIFY(desk.boxes.AllAnswered());
        QCOMPARE(desk.display.changes, desk.display.modes);
        QVERIFY_EXCEPTION_THROWN(info.SetDisplayMode(2), platform::Error);
    }
};

QTEST_MAIN(TestScreenInfo)
#include "TestScreenInfo.moc"
