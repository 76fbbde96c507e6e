#include "platform/agent/CharacterFile.h"
#include "platform/agent/MotionPlayer.h"
#include "platform/agent/Puppet.h"

#include <QDir>
#include <QSvgRenderer>
#include <QTest>
#include <cmath>
#include <set>

using namespace platform;

namespace {

const QDir kCharacters(QStringLiteral(CHARACTERS_FOLDER));
const QString kSounds = QStringLiteral(SOUNDS_FOLDER);
constexpr double kFrame = 1.0 / 60;
constexpr int kCoarsePixels = 128;

// What all three can do, and whether they can speak in its last pose.
struct Expected {
    const char *motion;
    bool speaks;
};
const Expected kMotions[] = {
    { "Show", false },
    { "Hide", false },
    { "RestPose", true },
    { "Blink", false },
    { "Idle1_1", false },
    { "Idle1_2", false },
    { "Idle1_3", false },
    { "Idle2_1", false },
    { "Idle3_1", false },
    { "Idle3_2", false },
    { "Acknowledge", false },
    { "Alert", true },
    { "Announce", true },
    { "Confused", true },
    { "Congratulate", true },
    { "Decline", true },
    { "DoMagic1", true },
    { "DoMagic2", false },
    { "DontRecognize", true },
    { "Explain", true },
    { "GestureDown", true },
    { "GestureLeft", true },
    { "GestureRight", true },
    { "GestureUp", true },
    { "GetAttention", true },
    { "GetAttentionContinued", true },
    { "GetAttentionReturn", false },
    { "Greet", true },
    { "Hearing_1", false },
    { "Hearing_2", false },
    { "LookDown", false },
    { "LookDownBlink", false },
    { "LookUp", false },
    { "LookUpBlink", false },
    { "MoveDown", false },
    { "MoveLeft", false },
    { "MoveRight", false },
    { "MoveUp", false },
    { "Pleased", true },
    { "Process", false },
    { "Processing", false },
    { "Read", true },
    { "ReadContinued", true },
    { "ReadReturn", false },
    { "Reading", false },
    { "Sad", true },
    { "Search", false },
    { "Searching", false },
    { "StartListening", true },
    { "StopListening", true },
    { "Suggest", true },
    { "Surprised", true },
    { "Think", true },
    { "Thinking", false },
    { "Uncertain", true },
    { "Wave", true },
    { "Write", true },
    { "WriteContinued", true },
    { "WriteReturn", false },
    { "Writing", false },
};

// What is played between two questions must not hold up the game.
const char *const kPlayedInTurns[] = { "Show",         "Hide",         "RestPose", "Blink",
                                       "Alert",        "Congratulate", "Pleased",  "Congratulate_2",
                                       "GetAttention", "Process",      "Read",     "Wave",
                                       "MoveUp",       "MoveDown",     "MoveLeft", "MoveRight" };

bool CloseTo(double left, double right, double by)
{
    return std::abs(left - right) <= by;
}

} // namespace

// The characters as they are shipped.
class TestCharacters : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const QString &folder : kCharacters.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            try {
                const CharacterSource source = ReadCharacterFolder(kCharacters.filePath(folder), kSounds);
                const auto character = std::make_shared<const CharacterData>(
                    ReadCharacter(source.drawing, source.figure, source.motions, &source.sounds));
                m_characters[character->name] = character;
                m_packed[character->name] = PackCharacter(source);
            } catch (const CharacterFault &fault) {
                QFAIL(qPrintable(folder + QStringLiteral(": ") + fault.Text()));
            }
        }
        QCOMPARE(m_characters.keys(), (QStringList{ "Genie", "Merlin", "Peedy" }));
    }

    void theirFilesReadBack()
    {
        for (const QString &name : m_characters.keys()) {
            const auto read = CharacterFromFile(m_packed[name]);
            QCOMPARE(read->name, name);
            QCOMPARE(read->motions.size(), m_characters[name]->motions.size());
            QCOMPARE(read->parts.size(), m_characters[name]->parts.size());
            QCOMPARE(read->size, QSize(128, 128));
        }
    }

    // At the end of a list he stands 190 units above Genie, or 215 on the smallest display.
    void peedysFeetAreOnGeniesTurban()
    {
        QSvgRenderer genie(m_characters["Genie"]->drawing);
        QSvgRenderer peedy(m_characters["Peedy"]->drawing);
        const QRectF turban = genie.boundsOnElement("turban");
        for (const char *foot : { "foot_l", "foot_r" }) {
            const double ground = peedy.boundsOnElement(foot).bottom();
            QVERIFY2(ground - 215 > turban.top(), qPrintable(QString::number(turban.top())));
            // The front of the cushion and its band stay in sight below his toes.
            QVERIFY2(ground - 190 < turban.bottom() - 18, qPrintable(QString::number(turban.bottom())));
        }
    }

    void theyHaveWhatTheGamePlays()
    {
        for (const auto &character : m_characters) {
            for (const Expected &expected : kMotions) {
                const Motion *motion = character->FindMotion(QLatin1String(expected.motion));
                const QString label = character->name + QLatin1Char(' ') + QLatin1String(expected.motion);
                QVERIFY2(motion, qPrintable(label));
                QVERIFY2(motion->speaks == expected.speaks, qPrintable(label));
            }
            // The bird goes on talking while he looks aside.
            for (const char *name : { "LookLeft", "LookRight", "LookLeftBlink", "LookRightBlink" }) {
                const Motion *motion = character->FindMotion(QLatin1String(name));
                QVERIFY2(motion, name);
                QVERIFY2(motion->speaks == (character->name == "Peedy"), name);
            }
        }
        QVERIFY(m_characters["Merlin"]->FindMotion("Congratulate_2"));
        QVERIFY(m_characters["Genie"]->FindMotion("Congratulate_2"));
        for (const char *name : { "Idle2_2", "Idle2_3", "Hearing_3", "LookDownReturn", "LookUpReturn",
                                  "LookLeftReturn", "LookRightReturn" }) {
            for (const auto &character : m_characters)
                QVERIFY2(character->FindMotion(QLatin1String(name)), qPrintable(character->name + name));
        }
        for (const char *corner : { "UpLeft", "UpRight", "DownLeft", "DownRight" }) {
            for (const char *more : { "", "Blink", "Return" }) {
                const QString name = QStringLiteral("Look") + QLatin1String(corner) + QLatin1String(more);
                const Motion *motion = m_characters["Peedy"]->FindMotion(name);
                QVERIFY2(motion && !motion->speaks, qPrintable(name));
            }
        }
        // The game counts on the fault that this raises.
        QVERIFY(!m_characters["Peedy"]->FindMotion("Congratulate_2"));
    }

    void heldPosesHaveTheirReturns()
    {
        for (const auto &character : m_characters) {
            for (const char *name :
                 { "GetAttention", "Read", "Write", "LookUp", "LookDown", "LookLeft", "LookRight",
                   "LookUpLeft", "LookUpRight", "LookDownLeft", "LookDownRight" }) {
                const QString back = QLatin1String(name) + QStringLiteral("Return");
                for (const char *more : { "", "Continued", "Blink" }) {
                    const Motion *motion = character->FindMotion(QLatin1String(name) + QLatin1String(more));
                    QVERIFY2(!motion || !character->FindMotion(back) || motion->returnMotion == back,
                             qPrintable(character->name + ' ' + name + more));
                }
            }
        }
    }

    void noneTakesTooLong()
    {
        for (const auto &character : m_characters) {
            for (const auto &[key, motion] : character->motions) {
                QVERIFY2(motion.length >= 0.6 && motion.length <= 6,
                         qPrintable(character->name + ' ' + motion.name));
            }
            for (const char *name : kPlayedInTurns) {
                const Motion *motion = character->FindMotion(QLatin1String(name));
                QVERIFY2(!motion || motion->length < 3, qPrintable(character->name + ' ' + name));
            }
        }
    }

    void comingGoingAndFlyingAreShort()
    {
        for (const auto &character : m_characters) {
            // A departure is seen for no longer when its screen has gone.
            for (const char *name : { "Show", "Hide" })
                QVERIFY2(character->FindMotion(QLatin1String(name))->length < 1.5,
                         qPrintable(character->name));
            for (const char *name : { "MoveUp", "MoveDown", "MoveLeft", "MoveRight" }) {
                const Motion *motion = character->FindMotion(QLatin1String(name));
                QVERIFY2(motion->aloft && motion->aloft->from < 0.5, qPrintable(character->name + name));
            }
        }
    }

    void theyHaveSeveralIdlesOnEachLevel()
    {
        for (const auto &character : m_characters) {
            for (std::size_t level = 0; level < kIdleLevels; ++level) {
                const auto &names = character->idle[level];
                QVERIFY2(std::set<QString>(names.begin(), names.end()).size() >= (level < 2 ? 4u : 2u),
                         qPrintable(character->name));
            }
        }
    }

    void onlyTheRightOnesGoOnForEver()
    {
        for (const auto &character : m_characters) {
            for (const auto &[key, motion] : character->motions) {
                const bool loops = key.startsWith("hearing_") || key == "idle3_2" || key == "processing" ||
                                   key == "reading" || key == "searching" || key == "thinking" ||
                                   key == "writing" || (key == "idle3_3" && character->name == "Peedy");
                QVERIFY2(loops == motion.loop.has_value(), qPrintable(character->name + ' ' + motion.name));
                const bool flies = QStringList{ "moveleft", "moveright", "moveup", "movedown" }.contains(key);
                QVERIFY2(flies == motion.aloft.has_value(), qPrintable(character->name + ' ' + motion.name));
            }
        }
    }

    void showAndHideBeginAndEndUnseen()
    {
        for (const auto &character : m_characters) {
            Puppet puppet(character);
            puppet.SetSize(QSize(128, 128));
            MotionPlayer player(character);
            player.PlayAtOnce(*character->FindMotion("Show"));
            QVERIFY2(Inked(puppet, player) < 40, qPrintable(character->name));
            Run(player, character->FindMotion("Show")->length + 0.6);
            QVERIFY2(Inked(puppet, player) > 3000, qPrintable(character->name));
            player.Play(*character->FindMotion("Hide"));
            Run(player, character->FindMotion("Hide")->length + 0.3);
            QVERIFY2(Inked(puppet, player) < 40, qPrintable(character->name));
        }
    }

    void motionsThatEndAtRestDo()
    {
        for (const auto &character : m_characters) {
            Pose pose(character->parts.size());
            for (const auto &[key, motion] : character->motions) {
                if (motion.comesBack != Motion::Return::None || key == "hide")
                    continue;
                PoseAt(motion, motion.length, pose);
                for (std::size_t index = 0; index < pose.numbers.size(); ++index) {
                    const Part &part = character->parts[index / kChanges];
                    // A part that is not seen may end anywhere.
                    if (part.hidden && pose.At(int(index / kChanges), Change::Fade) <= 0)
                        continue;
                    const auto change = static_cast<Change>(index % kChanges);
                    const double off = change == Change::Turn ? std::remainder(pose.numbers[index], 360.0)
                                                              : pose.numbers[index];
                    QVERIFY2(CloseTo(off, 0, 0.35),
                             qPrintable(QStringLiteral("%1 %2: %3 ends %4 off")
                                            .arg(character->name, motion.name, part.name)
                                            .arg(off)));
                }
            }
        }
    }

    void repeatedStretchesEndWhereTheyBegin()
    {
        for (const auto &character : m_characters) {
            Pose first(character->parts.size());
            Pose last(character->parts.size());
            std::vector<PartFrame> before, after;
            const std::vector<double> still(character->parts.size(), 0.0);
            for (const auto &[key, motion] : character->motions) {
                const auto stretch = motion.loop ? motion.loop : motion.aloft;
                if (!stretch)
                    continue;
                PoseAt(motion, stretch->from, first);
                PoseAt(motion, stretch->to, last);
                ComputeFrames(*character, first, still, before);
                ComputeFrames(*character, last, still, after);
                for (std::size_t index = 0; index < before.size(); ++index) {
                    if (before[index].opacity < 0.01 || after[index].opacity < 0.01)
                        continue;
                    // A corner some way off the pivot tells of turns, shifts and scales.
                    const QPointF corner = character->parts[index].pivot + QPointF(20, 20);
                    const QPointF jump = after[index].place.Map(corner) - before[index].place.Map(corner);
                    QVERIFY2(std::hypot(jump.x(), jump.y()) < 3,
                             qPrintable(QStringLiteral("%1 %2: %3 jumps by %4 units")
                                            .arg(character->name, motion.name, character->parts[index].name)
                                            .arg(std::hypot(jump.x(), jump.y()))));
                }
            }
        }
    }

    void everyMouthLooksDifferent()
    {
        for (const auto &character : m_characters) {
            Puppet puppet(character);
            puppet.SetSize(QSize(256, 256));
            std::vector<QImage> images;
            for (std::size_t mouth = 0; mouth < kMouths; ++mouth) {
                MotionPlayer player(character);
                player.ShowMouth(static_cast<Mouth>(mouth));
                Run(player, 0.1);
                puppet.Draw(player.Shown(), player.Frames());
                for (std::size_t other = 0; other < images.size(); ++other) {
                    QVERIFY2(Difference(images[other], puppet.Image()) > 60,
                             qPrintable(character->name + ' ' + MouthName(static_cast<Mouth>(mouth)) +
                                        " and " + MouthName(static_cast<Mouth>(other))));
                }
                images.push_back(puppet.Image().copy());
            }
        }
    }

    void whatMovesIsBoundedAndFinite()
    {
        for (const auto &character : m_characters) {
            MotionPlayer player(character);
            for (const auto &[key, motion] : character->motions) {
                player.Play(motion);
                for (double time = 0; time < motion.length + 0.5; time += kFrame) {
                    player.Advance(kFrame);
                    for (const PartFrame &frame : player.Frames()) {
                        const Affine &place = frame.place;
                        for (const double number : { place.a, place.b, place.c, place.d, place.e, place.f })
                            QVERIFY(std::isfinite(number) && std::abs(number) < 3000);
                    }
                }
            }
        }
    }

    void posesThatAreHeldLookDifferent()
    {
        // So many pixels of the frame; beard, mist and tail alone change a few hundred.
        constexpr int kTellsApart = kCoarsePixels * kCoarsePixels / 11;
        for (const auto &character : m_characters) {
            Puppet puppet(character);
            puppet.SetSize(QSize(kCoarsePixels, kCoarsePixels));
            std::vector<std::pair<QString, QImage>> poses;
            QStringList alike;
            for (const auto &[key, motion] : character->motions) {
                // A motion that goes on with another ends in its pose.
                if (motion.comesBack == Motion::Return::None || motion.loop || key.endsWith("continued") ||
                    key.endsWith("blink"))
                    continue;
                MotionPlayer player(character);
                player.PlayAtOnce(motion);
                Run(player, motion.aloft ? motion.length - kFrame : motion.length + 2);
                puppet.Draw(player.Shown(), player.Frames());
                for (const auto &[name, image] : poses) {
                    if (Difference(image, puppet.Image()) < kTellsApart)
                        alike << name + QStringLiteral(" and ") + motion.name + ' ' +
                                     QString::number(Difference(image, puppet.Image()));
                }
                poses.emplace_back(motion.name, puppet.Image().copy());
            }
            QVERIFY2(poses.size() > 25, qPrintable(character->name));
            QVERIFY2(alike.isEmpty(), qPrintable(character->name + ' ' + alike.join(QStringLiteral(", "))));
        }
    }

    void aRepaintOfWhatChangedEqualsARepaintOfAll()
    {
        for (const auto &character : m_characters) {
            Puppet sparing(character);
            sparing.SetSize(QSize(256, 256));
            MotionPlayer player(character);
            for (const char *name : { "Wave", "Congratulate", "Read", "MoveLeft" }) {
                player.Play(*character->FindMotion(QLatin1String(name)));
                for (int frame = 0; frame < 40; ++frame) {
                    player.Advance(0.04);
                    player.ShowMouth(frame % 3 ? std::optional(Mouth::AA) : std::nullopt);
                    sparing.Draw(player.Shown(), player.Frames());
                    if (frame % 8 != 7)
                        continue;
                    Puppet whole(character);
                    whole.SetSize(QSize(256, 256));
                    whole.Draw(player.Shown(), player.Frames());
                    QVERIFY2(Difference(sparing.Image(), whole.Image()) < 30,
                             qPrintable(character->name + ' ' + name));
                }
            }
        }
    }

private:
    static void Run(MotionPlayer &player, double seconds)
    {
        for (double time = 0; time < seconds; time += kFrame)
            player.Advance(kFrame);
    }
    static int Inked(Puppet &puppet, const MotionPlayer &player)
    {
        puppet.Draw(player.Shown(), player.Frames());
        const QImage &image = puppet.Image();
        int inked = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                inked += qAlpha(image.pixel(x, y)) > 40;
        }
        return inked;
    }
    // How many pixels differ clearly.
    static int Difference(const QImage &left, const QImage &right)
    {
        int different = 0;
        for (int y = 0; y < left.height(); ++y) {
            for (int x = 0; x < left.width(); ++x) {
                const QRgb one = left.pixel(x, y), two = right.pixel(x, y);
                different += std::abs(qRed(one) - qRed(two)) + std::abs(qGreen(one) - qGreen(two)) +
                                 std::abs(qBlue(one) - qBlue(two)) + std::abs(qAlpha(one) - qAlpha(two)) >
                             60;
            }
        }
        return different;
    }

    QMap<QString, std::shared_ptr<const CharacterData>> m_characters;
    QMap<QString, QByteArray> m_packed;
};

QTEST_GUILESS_MAIN(TestCharacters)
#include "TestCharacters.moc"
