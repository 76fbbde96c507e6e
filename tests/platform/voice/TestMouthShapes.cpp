#include "platform/voice/MouthShapes.h"

#include <QTest>

using platform::MouthCue;
using platform::MouthName;
using platform::MouthShapes;
using platform::SpokenSound;

// Which mouth goes with which sound, and when.
class TestMouthShapes : public QObject {
    Q_OBJECT
private slots:
    void soundHasItsShape_data();
    void soundHasItsShape();
    void shapesFollowTheSounds_data();
    void shapesFollowTheSounds();
    void silenceIsRest();
    void everyShapeHasAName();
};

// Shapes with the milliseconds at which they begin.
static QString Written(const std::vector<MouthCue> &cues)
{
    QStringList words;
    for (const auto &cue : cues)
        words << QStringLiteral("%1:%2").arg(cue.at.count() / 1000).arg(MouthName(cue.mouth));
    return words.join(u' ');
}

// "p90 iy200" is a row of sounds with their lengths in milliseconds.
static std::vector<SpokenSound> Sounds(const QString &row)
{
    std::vector<SpokenSound> sounds;
    double at = 0;
    for (const auto &sound : row.split(u' ', Qt::SkipEmptyParts)) {
        auto letters = sound;
        auto length = sound;
        letters.removeIf([](QChar c) { return c.isDigit(); });
        length.removeIf([](QChar c) { return !c.isDigit(); });
        sounds.push_back({ at, at + length.toDouble() / 1000, letters.toStdString() });
        at = sounds.back().ends;
    }
    return sounds;
}

void TestMouthShapes::soundHasItsShape_data()
{
    QTest::addColumn<QString>("phones");
    QTest::addColumn<QString>("mouth");
    QTest::newRow("lips pressed") << "p b m"
                                  << "MBP";
    QTest::newRow("teeth on lip") << "f v"
                                  << "FV";
    QTest::newRow("tongue seen") << "th dh l"
                                 << "ThL";
    QTest::newRow("behind the teeth") << "t d n s z sh zh ch jh k g ng hh dx"
                                      << "Cons";
    QTest::newRow("wide open") << "aa ae ah"
                               << "AA";
    QTest::newRow("half open") << "eh ax er"
                               << "EH";
    QTest::newRow("smiling") << "iy ih y"
                             << "EE";
    QTest::newRow("round") << "ao"
                           << "OH";
    QTest::newRow("pucker") << "uw uh w r"
                            << "OO";
    QTest::newRow("unknown") << "xyz"
                             << "Cons";
}

void TestMouthShapes::soundHasItsShape()
{
    QFETCH(QString, phones);
    QFETCH(QString, mouth);
    for (const auto &phone : phones.split(u' ')) {
        const auto cues = MouthShapes(Sounds("pau200 " + phone + "200 pau200"));
        QCOMPARE(cues.size(), 3U);
        QCOMPARE(MouthName(cues[1].mouth), mouth);
        QCOMPARE(cues[1].at.count() / 1000, mouth == u"MBP" ? 160 : 200);
        QCOMPARE(cues[2].at.count() / 1000, 400);
    }
}

void TestMouthShapes::shapesFollowTheSounds_data()
{
    QTest::addColumn<QString>("sounds");
    QTest::addColumn<QString>("cues");
    const auto row = [](const char *name, const char *sounds, const char *cues) {
        QTest::newRow(name) << sounds << cues;
    };
    row("nothing", "", "0:Rest");
    row("silence", "pau500", "0:Rest");
    row("diphthongs", "pau100 ay100 pau100 aw100 pau100 ey100 pau100 oy100 pau100 ow200 pau100",
        "0:Rest 100:AA 200:Rest 300:AA 400:Rest 500:EH 600:Rest 700:OH 800:Rest 900:OH 1004:OO 1100:Rest");
    row("long diphthong", "pau100 ay200 pau100", "0:Rest 100:AA 204:EE 300:Rest");
    row("lips close ahead", "pau100 aa200 m80 aa200 pau100", "0:Rest 100:AA 260:MBP 380:AA 580:Rest");
    row("lips at the start", "p100 iy200 pau50", "0:Rest 1:MBP 100:EE 300:Rest");
    row("same shape twice", "pau100 t100 s100 pau100", "0:Rest 100:Cons 300:Rest");
    row("short tongue goes under", "pau100 aa200 t30 iy200 pau100", "0:Rest 100:AA 330:EE 530:Rest");
    row("short lips stay", "pau100 aa200 b20 iy200 pau100", "0:Rest 100:AA 260:MBP 320:EE 520:Rest");
    row("short teeth stay", "pau100 aa200 v30 iy200 pau100", "0:Rest 100:AA 300:FV 330:EE 530:Rest");
    row("lips open in time", "pau100 m100 t30 iy200 pau100", "0:Rest 60:MBP 200:EE 430:Rest");
    row("short rest goes under", "pau100 aa200 pau30 iy200 pau100", "0:Rest 100:AA 330:EE 530:Rest");
    row("short vowel between lips", "pau100 m80 ax50 m80 pau100", "0:Rest 60:MBP 180:EH 205:MBP 310:Rest");
    row("no silence behind", "pau100 aa200", "0:Rest 100:AA 300:Rest");
}

void TestMouthShapes::shapesFollowTheSounds()
{
    QFETCH(QString, sounds);
    QFETCH(QString, cues);
    QCOMPARE(Written(MouthShapes(Sounds(sounds))), cues);
}

void TestMouthShapes::silenceIsRest()
{
    const auto cues = MouthShapes({});
    QCOMPARE(cues.size(), 1U);
    QCOMPARE(cues[0].at.count(), 0);
    QVERIFY(cues[0].mouth == platform::Mouth::Rest);
}

void TestMouthShapes::everyShapeHasAName()
{
    QStringList names;
    for (int shape = 0; shape <= static_cast<int>(platform::Mouth::OO); ++shape)
        names << MouthName(static_cast<platform::Mouth>(shape));
    QCOMPARE(names.join(u' '), QStringLiteral("Rest MBP FV ThL Cons AA EH EE OH OO"));
}

QTEST_APPLESS_MAIN(TestMouthShapes)
#include "TestMouthShapes.moc"
