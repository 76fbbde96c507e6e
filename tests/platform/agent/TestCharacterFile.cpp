#include "platform/Error.h"
#include "platform/agent/CharacterFile.h"
#include "platform/agent/OrderedJson.h"
#include "support/SmallCharacter.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborStreamWriter>
#include <QCborValue>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <limits>
#include <set>

using namespace platform;

namespace {

qint32 NumberRaised(const QByteArray &file)
{
    try {
        CharacterFromFile(file);
    } catch (const Error &error) {
        return error.Number();
    }
    return 0;
}

QCborValue Json(const QByteArray &text)
{
    return ReadOrderedJson(text);
}

// Sets what lies at `path`, such as "parts/3/pivot", to `value`; an undefined value takes it out.
QCborValue Changed(const QCborValue &value, const QStringList &path, const QCborValue &to)
{
    if (path.isEmpty())
        return to;
    const QString &key = path.front();
    if (value.isArray()) {
        QCborArray array = value.toArray();
        const qsizetype index = key.toInt();
        array[index] = Changed(array.at(index), path.mid(1), to);
        return array;
    }
    QCborMap map = value.toMap();
    const QCborValue changed = Changed(map.value(key), path.mid(1), to);
    if (changed.isUndefined())
        map.remove(key);
    else
        map[key] = changed;
    return map;
}

const QString kFigure = QStringLiteral("figure");
const QString kWave = QStringLiteral("motions/Wave");

} // namespace

class TestCharacterFile : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }

    void packingKeepsEverything()
    {
        const CharacterSource source = support::SmallCharacterSource();
        const auto character = CharacterFromFile(PackCharacter(source));
        QCOMPARE(character->name, QStringLiteral("Merlin"));
        QCOMPARE(character->drawing, source.drawing);
        QCOMPARE(character->parts.size(), std::size_t(8));
        QCOMPARE(character->size, QSize(128, 128));
        QCOMPARE(character->voice.voice, QStringLiteral("cmu_us_awb"));
        QCOMPARE(character->voice.pitch, 0.9);
        QCOMPARE(character->motions.size(), std::size_t(source.motions.size()));
        const Motion *wave = character->FindMotion("wAVE");
        QVERIFY(wave);
        QCOMPARE(wave->length, 1.2);
        QVERIFY(wave->speaks);
        QCOMPARE(wave->still, std::vector<int>{ 6 });
        QCOMPARE(wave->curves.size(), std::size_t(1));
        QCOMPARE(wave->curves[0].keys[1].value, -100.0);
        QVERIFY(wave->curves[0].keys[1].ease == Ease::Out);
        QVERIFY(!character->FindMotion("Juggle"));
        // The order in which variants are written tells which is seen at rest, not their alphabet.
        const Part &arm = character->parts[6];
        QCOMPARE(arm.variants[0].name, QStringLiteral("rest"));
        QCOMPARE(arm.variants[1].name, QStringLiteral("open"));
    }

    void carriersStandBeforeWhatTheyCarry()
    {
        const auto character = support::SmallCharacter();
        std::set<int> placed{ -1 };
        for (const int index : character->carriersFirst) {
            QVERIFY(placed.count(character->parts[std::size_t(index)].parent));
            placed.insert(index);
        }
        QCOMPARE(placed.size(), character->parts.size() + 1);
    }

    void aFileIsReadFromItsFolder()
    {
        support::WriteSmallCharacter(m_folder.path(), "Merlin");
        QCOMPARE(LoadCharacterFile(m_folder.filePath("Merlin.acs"))->name, QStringLiteral("Merlin"));
        const auto number = [](const QString &path) {
            try {
                LoadCharacterFile(path);
            } catch (const Error &error) {
                return error.Number();
            }
            return qint32(0);
        };
        QCOMPARE(number(m_folder.filePath("Nobody.acs")), qint32(kAgentFileMissing));
        QCOMPARE(number(m_folder.path()), qint32(kAgentFileMissing));
        QCOMPARE(number(QString()), qint32(kAgentFileMissing));
    }

    void whatIsNoCharacterFileIsRefused_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<qint32>("number");
        const QByteArray good = PackCharacter(support::SmallCharacterSource());
        const auto document = [&good](const QString &key, const QCborValue &value) {
            QCborMap map = QCborValue::fromCbor(good).taggedValue().toMap();
            if (value.isUndefined())
                map.remove(key);
            else
                map[key] = value;
            return QCborValue(QCborKnownTags::Signature, map).toCbor();
        };
        QTest::newRow("empty") << QByteArray() << qint32(kNotACharacterFile);
        QTest::newRow("text") << QByteArray("Hello") << qint32(kNotACharacterFile);
        QTest::newRow("JSON") << QByteArray("{\"format\": \"tumblewick-character\"}")
                              << qint32(kNotACharacterFile);
        QTest::newRow("without tag") << QCborValue::fromCbor(good).taggedValue().toCbor()
                                     << qint32(kNotACharacterFile);
        QTest::newRow("tag alone") << good.left(3) << qint32(kAgentBadData);
        QTest::newRow("a number") << QCborValue(QCborKnownTags::Signature, 7).toCbor()
                                  << qint32(kNotACharacterFile);
        QTest::newRow("another format") << document("format", "something") << qint32(kNotACharacterFile);
        QTest::newRow("no format") << document("format", QCborValue()) << qint32(kNotACharacterFile);
        QTest::newRow("version 3") << document("version", 3) << qint32(kCharacterFileTooNew);
        QTest::newRow("version 1") << document("version", 1) << qint32(kCharacterFileTooOld);
        QTest::newRow("version of long ago")
            << document("version", std::numeric_limits<qint64>::min()) << qint32(kCharacterFileTooOld);
        QTest::newRow("version of the far future")
            << document("version", std::numeric_limits<qint64>::max()) << qint32(kCharacterFileTooNew);
        QTest::newRow("no version") << document("version", QCborValue()) << qint32(kAgentBadData);
        QTest::newRow("version as text") << document("version", "2") << qint32(kAgentBadData);
        QTest::newRow("half a version") << document("version", 2.5) << qint32(kAgentBadData);
        QTest::newRow("no drawing") << document("drawing", QCborValue()) << qint32(kAgentBadData);
        QTest::newRow("a drawing that is none")
            << document("drawing", QByteArray("<svg")) << qint32(kAgentBadData);
        QTest::newRow("drawing as number") << document("drawing", 1) << qint32(kAgentBadData);
        QTest::newRow("no figure") << document("figure", QCborValue()) << qint32(kAgentBadData);
        QTest::newRow("figure as list") << document("figure", QCborArray{ 1 }) << qint32(kAgentBadData);
        QTest::newRow("no motions") << document("motions", QCborValue()) << qint32(kAgentBadData);
        QTest::newRow("motion names as numbers")
            << document("motions", QCborMap{ { 1, QCborMap() } }) << qint32(kAgentBadData);
        const auto sound = [&document](const QCborValue &samples) {
            return document("sounds", QCborMap{ { "ping", samples } });
        };
        QTest::newRow("a sound that is none") << sound("ping") << qint32(kBadSoundFile);
        QTest::newRow("a sound without samples") << sound(QByteArray()) << qint32(kBadSoundFile);
        QTest::newRow("half a sample") << sound(QByteArray(7, '\1')) << qint32(kBadSoundFile);
        QTest::newRow("a sound without end")
            << sound(QByteArray(2 * kSoundRate * 7, '\1')) << qint32(kBadSoundFile);
        QCborMap many;
        for (int index = 0; index < 40; ++index)
            many.insert(QStringLiteral("s%1").arg(index), QByteArray(2 * kSoundRate * 5, '\1'));
        QTest::newRow("more sound than fits") << document("sounds", many) << qint32(kBadSoundFile);
        QTest::newRow("half of it") << good.left(good.size() / 2) << qint32(kAgentBadData);
        const QByteArray tag = good.left(3);
        QTest::newRow("a list without end")
            << tag + QByteArray::fromHex("9b7fffffffffffffff") << qint32(kAgentBadData);
        QTest::newRow("a text without end")
            << tag + QByteArray::fromHex("7b7fffffffffffffff") << qint32(kAgentBadData);
        QTest::newRow("a map without end")
            << tag + QByteArray::fromHex("bb7fffffffffffffff") << qint32(kAgentBadData);
        QTest::newRow("deeply nested") << tag + QByteArray(200000, char(0x81)) << qint32(kAgentBadData);
    }
    void whatIsNoCharacterFileIsRefused()
    {
        QFETCH(QByteArray, file);
        QFETCH(qint32, number);
        QCOMPARE(NumberRaised(file), number);
    }

    void badDataIsRefused_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<QCborValue>("value");
        QTest::addColumn<QString>("told"); // what the packer says
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinity = std::numeric_limits<double>::infinity();
        const auto row = [](const char *name, const QString &place, const QCborValue &value,
                            const char *told) {
            QTest::newRow(name) << place << value << QString::fromLatin1(told);
        };
        // clang-format off
        row("no name", kFigure + "/name", QCborValue(), "figure.json: name is missing");
        row("name as number", kFigure + "/name", 4, "figure.json: name is not a text");
        row("unknown key", kFigure + "/partz", 4, "figure.json: partz is not known here");
        row("size of one number", kFigure + "/size", Json("[128]"), "figure.json: size does not have 2 entries");
        row("size of nothing", kFigure + "/size/0", 0, "figure.json: size[0] is not between 16 and 1024");
        row("huge size", kFigure + "/size/1", 1e9, "figure.json: size[1] is not between 16 and 1024");
        row("mouth point not a number", kFigure + "/mouth_point/0", nan, "figure.json: mouth_point[0] is not between -10000 and 10000");
        row("face with a hole", kFigure + "/face", Json("[1, 2, 3]"), "figure.json: face does not have 4 entries");
        row("face inside out", kFigure + "/face/2", -5, "figure.json: face[2] is not between 0 and 256");
        row("no voice", kFigure + "/voice/voice", QCborValue(), "figure.json: voice.voice is missing");
        row("no breath to speak", kFigure + "/voice/rate", 0, "figure.json: voice.rate is not between 0.25 and 4");
        row("no parts", kFigure + "/parts", QCborArray(), "figure.json: parts does not have 1 to 400 entries");
        row("parts as object", kFigure + "/parts", QCborMap(), "figure.json: parts is not a list");
        row("root with parent", kFigure + "/parts/0/parent", "body", "figure.json: parts[0] is the root and has a parent");
        row("part without parent", kFigure + "/parts/1/parent", QCborValue(), "figure.json: parts[1].parent is missing");
        row("unknown parent", kFigure + "/parts/3/parent", "tail", "figure.json: parts[3].parent names the unknown part \"tail\"");
        row("own parent", kFigure + "/parts/3/parent", "head", "figure.json: parts[2] is carried by itself");
        row("ring of parents", kFigure + "/parts/1/parent", "prop", "figure.json: parts[1] is carried by itself");
        row("two of one name", kFigure + "/parts/1/name", "head", "figure.json: parts[3].name is the name of two parts");
        row("dot in a name", kFigure + "/parts/1/name", "a.b", "figure.json: parts[1].name is not a name for a part");
        row("pivot infinite", kFigure + "/parts/1/pivot/0", infinity, "figure.json: parts[1].pivot[0] is not between -10000 and 10000");
        row("pivot far away", kFigure + "/parts/1/pivot/1", 1e300, "figure.json: parts[1].pivot[1] is not between -10000 and 10000");
        row("no such group", kFigure + "/parts/1/drawing", "torso", "figure.json: parts[1].drawing names the group \"torso\", which is not in the drawing");
        row("no variants", kFigure + "/parts/6/variants", QCborMap(), "figure.json: parts[6].variants is empty");
        row("variant without group", kFigure + "/parts/6/variants/open", "wing", "figure.json: parts[6].variants.open names the group \"wing\", which is not in the drawing");
        row("hidden as number", kFigure + "/parts/7/hidden", 1, "figure.json: parts[7].hidden is neither true nor false");
        row("lag without swing", kFigure + "/parts/2/lag/swing", QCborValue(), "figure.json: parts[2].lag.swing is missing");
        row("lag too stiff", kFigure + "/parts/2/lag/stiffness", 1e6, "figure.json: parts[2].lag.stiffness is not between 1 and 1000");
        row("lag not a number", kFigure + "/parts/2/lag/damping", nan, "figure.json: parts[2].lag.damping is not between 0 and 100");
        row("mouth missing", kFigure + "/mouths/OO", QCborValue(), "figure.json: mouths.OO is missing");
        row("eleventh mouth", kFigure + "/mouths/UU", QCborMap(), "figure.json: mouths.UU is not known here");
        row("mouth of unknown part", kFigure + "/mouths/AA/jaw.y", 3, "figure.json: mouths.AA.jaw.y names the unknown part \"jaw\"");
        row("mouth of unknown swap", kFigure + "/mouths/AA/mouth.swap", "yawn", "figure.json: mouths.AA.mouth.swap names the unknown variant \"yawn\"");
        row("blink without length", kFigure + "/blink/length", QCborValue(), "figure.json: blink.length is missing");
        row("breath of no length", kFigure + "/breath/length", 0, "figure.json: breath.length is not between 0.05 and 30");
        row("accents as object", kFigure + "/accents", QCborMap(), "figure.json: accents is not a list");
        row("two idle levels", kFigure + "/idle", Json("[[], []]"), "figure.json: idle does not have 3 entries");
        row("idle unknown", kFigure + "/idle/2/0", "Dance", "figure.json: idle[2][0] names an unknown motion");

        row("motion as list", kWave, QCborArray(), "motions/Wave.json is not an object");
        row("motion without length", kWave + "/length", QCborValue(), "motions/Wave.json: length is missing");
        row("length not a number", kWave + "/length", nan, "motions/Wave.json: length is not between 0.05 and 30");
        row("no return", kWave + "/return", QCborValue(), "motions/Wave.json: return is missing");
        row("unknown return", kWave + "/return", "WaveReturn", "motions/Wave.json: return names the unknown motion \"WaveReturn\"");
        row("return to another return", kWave + "/return", "Read", "motions/Wave.json: return names a motion that does not end at rest");
        row("return for ever", kWave + "/return", "Doze", "motions/Wave.json: return names a motion that does not end at rest");
        row("misspelt key", kWave + "/spaeks", true, "motions/Wave.json: spaeks is not known here");
        row("nothing still", kWave + "/still", QCborArray(), "motions/Wave.json: still does not have 1 to 8 entries");
        row("unknown part still", kWave + "/still/0", "tail", "motions/Wave.json: still[0] names the unknown part \"tail\"");
        row("no curves", kWave + "/curves", QCborValue(), "motions/Wave.json: curves is missing");
        row("curve of unknown part", kWave + "/curves/tail.turn", Json("[[0, 0]]"), "motions/Wave.json: curves.tail.turn names the unknown part \"tail\"");
        row("curve of unknown change", kWave + "/curves/arm.bend", Json("[[0, 0]]"), "motions/Wave.json: curves.arm.bend ends in none of turn, x, y, sx, sy, fade, swap");
        row("curve without a dot", kWave + "/curves/arm", Json("[[0, 0]]"), "motions/Wave.json: curves.arm is not of the form part.what");
        row("curve without keys", kWave + "/curves/arm.turn", QCborArray(), "motions/Wave.json: curves.arm.turn does not have 1 to 400 entries");
        row("key of one number", kWave + "/curves/arm.turn/0", Json("[0]"), "motions/Wave.json: curves.arm.turn[0] does not have 2 to 3 entries");
        row("key not a number", kWave + "/curves/arm.turn/1/1", nan, "motions/Wave.json: curves.arm.turn[1][1] is not between -10000 and 10000");
        row("key out of time", kWave + "/curves/arm.turn/2/0", 9, "motions/Wave.json: curves.arm.turn[2][0] is not between 0 and 1.2");
        row("key back in time", kWave + "/curves/arm.turn/2/0", 0.1, "motions/Wave.json: curves.arm.turn[2] goes back in time");
        row("unknown ease", kWave + "/curves/arm.turn/1/2", "wobble", "motions/Wave.json: curves.arm.turn[1] has the unknown ease \"wobble\"");
        row("unknown swap", kWave + "/curves/arm.swap/0/1", "fist", "motions/Wave.json: curves.arm.swap[0] names the unknown variant \"fist\"");
        row("swap of a part without variants", kWave + "/curves/head.swap", Json("[[0, \"big\"]]"), "motions/Wave.json: curves.head.swap[0] names the unknown variant \"big\"");
        row("swap to nothing", kWave + "/curves/head.swap", Json("[[0, \"\"]]"), "motions/Wave.json: curves.head.swap[0] names the unknown variant \"\"");
        row("swap to a number", kWave + "/curves/arm.swap/0/1", 1, "motions/Wave.json: curves.arm.swap[0][1] is not a text");
        row("loop without end", kWave + "/loop", Json("[1, 1]"), "motions/Wave.json: loop is too short a stretch");
        row("loop backwards", kWave + "/loop", Json("[1, 0.2]"), "motions/Wave.json: loop is too short a stretch");
        row("loop beyond the end", kWave + "/loop", Json("[0, 3]"), "motions/Wave.json: loop[1] is not between 0 and 1.2");
        row("aloft of one number", kWave + "/aloft", Json("[1]"), "motions/Wave.json: aloft does not have 2 entries");
        row("cues as object", kWave + "/sounds", QCborMap(), "motions/Wave.json: sounds is not a list");
        row("no cues", kWave + "/sounds", QCborArray(), "motions/Wave.json: sounds does not have 1 to 60 entries");
        row("cue without a name", kWave + "/sounds", Json("[[0]]"), "motions/Wave.json: sounds[0] does not have 2 entries");
        row("cue named by a number", kWave + "/sounds", Json("[[0, 1]]"), "motions/Wave.json: sounds[0][1] is not a text");
        row("cue before the motion", kWave + "/sounds", Json("[[-0.1, \"ping\"]]"), "motions/Wave.json: sounds[0][0] is not between 0 and 1.2");
        row("cue behind the motion", kWave + "/sounds", Json("[[1.3, \"ping\"]]"), "motions/Wave.json: sounds[0][0] is not between 0 and 1.2");
        row("cues back in time", kWave + "/sounds", Json("[[0.5, \"ping\"], [0.2, \"ping\"]]"), "motions/Wave.json: sounds[1] goes back in time");
        row("cue of a name that is too long", kWave + "/sounds", Json("[[0, \"" + QByteArray(70, 'p') + "\"]]"), "motions/Wave.json: sounds[0][1] is too long");
        row("unknown sound", kWave + "/sounds", Json("[[0, \"pong\"]]"), "motions/Wave.json: sounds[0][1] names the unknown sound \"pong\"");
        row("blend for ever", kWave + "/blend", 100, "motions/Wave.json: blend is not between 0 and 5");
        row("two spellings", "motions/wAVE", Json("{ \"length\": 1, \"return\": \"none\", \"curves\": {} }"), "motions/wAVE.json is there in two spellings");
        row("motion name as path", "motions/..", Json("{ \"length\": 1, \"return\": \"none\", \"curves\": {} }"), "motions/...json is not a name for a motion");
        // clang-format on

        QCborArray keys;
        for (int key = 0; key < 500; ++key)
            keys.append(QCborArray{ 0, 0 });
        row("too many keys", kWave + "/curves/arm.turn", keys,
            "motions/Wave.json: curves.arm.turn does not have 1 to 400 entries");
        QCborArray parts;
        for (int part = 0; part < 500; ++part)
            parts.append(
                QCborMap{ { "name", QStringLiteral("p%1").arg(part) }, { "pivot", QCborArray{ 0, 0 } } });
        row("too many parts", kFigure + "/parts", parts, "figure.json: parts does not have 1 to 400 entries");
        QCborMap variants;
        for (int variant = 0; variant < 65; ++variant)
            variants.insert(QStringLiteral("v%1").arg(variant), "");
        row("too many variants", kFigure + "/parts/6/variants", variants,
            "figure.json: parts[6].variants has too many members");
        QCborMap curves;
        for (int curve = 0; curve < 1001; ++curve)
            curves.insert(QStringLiteral("c%1.turn").arg(curve), QCborArray());
        row("too many curves", kWave + "/curves", curves, "motions/Wave.json: curves has too many members");
        QCborArray accents;
        for (int accent = 0; accent < 33; ++accent)
            accents.append(Json("{ \"length\": 1, \"curves\": {} }"));
        row("too many accents", kFigure + "/accents", accents,
            "figure.json: accents does not have 0 to 32 entries");
        QCborArray idles;
        for (int idle = 0; idle < 401; ++idle)
            idles.append("Wave");
        row("too many idles", kFigure + "/idle/0", idles,
            "figure.json: idle[0] does not have 0 to 400 entries");
        QCborMap motions;
        for (int motion = 0; motion < 401; ++motion)
            motions.insert(QStringLiteral("m%1").arg(motion), QCborMap());
        row("too many motions", "motions", motions, "motions has too many members");
        row("a long name", kFigure + "/name", QString(65, 'x'), "figure.json: name is too long");
    }
    void badDataIsRefused()
    {
        QFETCH(QString, place);
        QFETCH(QCborValue, value);
        QFETCH(QString, told);
        const CharacterSource good = support::SmallCharacterSource();
        QCborMap whole{ { "figure", good.figure }, { "motions", good.motions } };
        // Channels hold a dot, so the places are parted by slashes.
        whole = Changed(whole, place.split('/'), value).toMap();
        const CharacterSource bad{ good.drawing, whole.value("figure").toMap(),
                                   whole.value("motions").toMap(),
                                   QCborMap{ { "ping", QByteArray(480, '\1') } } };
        QString said;
        try {
            ReadCharacter(bad.drawing, bad.figure, bad.motions, &bad.sounds);
        } catch (const CharacterFault &fault) {
            said = fault.Text();
        }
        QCOMPARE(said, told);
        QCOMPARE(NumberRaised(PackCharacter(bad)), qint32(kAgentBadData));
    }

    void cuesBringTheirSounds()
    {
        CharacterSource source = support::SmallCharacterSource();
        QCborMap wave = source.motions.value("Wave").toMap();
        wave.insert(QStringLiteral("sounds"), Json("[[0, \"ping\"], [0.5, \"ping\"]]"));
        source.motions[QStringLiteral("Wave")] = wave;
        source.sounds = { { "ping", QByteArray("\1\2\3\4") } };
        const auto character = CharacterFromFile(PackCharacter(source));
        const auto &cues = character->FindMotion("Wave")->sounds;
        QCOMPARE(cues.size(), std::size_t(2));
        QCOMPARE(cues[1].at, 0.5);
        QCOMPARE(cues[1].sound->samples, QByteArray("\1\2\3\4"));
        QVERIFY(cues[0].sound == cues[1].sound); // kept once
        // Whoever only draws needs no sounds.
        const auto silent = ReadCharacter(source.drawing, source.figure, source.motions);
        QCOMPARE(silent.FindMotion("Wave")->sounds.size(), std::size_t(2));
        QVERIFY(!silent.FindMotion("Wave")->sounds[0].sound);
    }

    void wavesAreReadFromTheirFolder_data()
    {
        QTest::addColumn<QByteArray>("wave");
        QTest::addColumn<bool>("good");
        const QByteArray samples("\1\2\3\4");
        const auto wave = [&samples](int kind, int channels, int rate, int bits,
                                     const QByteArray &between = {}) {
            QByteArray bytes("RIFF....WAVE");
            const auto put = [&bytes](int number, int size) {
                for (int byte = 0; byte < size; ++byte)
                    bytes += char(number >> (8 * byte) & 0xff);
            };
            bytes += "fmt ";
            put(16, 4);
            put(kind, 2);
            put(channels, 2);
            put(rate, 4);
            put(rate * 2, 4);
            put(2, 2);
            put(bits, 2);
            bytes += between + "data";
            put(int(samples.size()), 4);
            return bytes + samples;
        };
        const QByteArray good = wave(1, 1, kSoundRate, 16);
        QTest::newRow("good") << good << true;
        QTest::newRow("with another chunk")
            << wave(1, 1, kSoundRate, 16, QByteArray("LIST\3\0\0\0abc\0", 12)) << true;
        QTest::newRow("floating point") << wave(3, 1, kSoundRate, 16) << false;
        QTest::newRow("two channels") << wave(1, 2, kSoundRate, 16) << false;
        QTest::newRow("another rate") << wave(1, 1, 44100, 16) << false;
        QTest::newRow("8 bits") << wave(1, 1, kSoundRate, 8) << false;
        QTest::newRow("cut off") << good.chopped(1) << false;
        QTest::newRow("without samples") << good.left(36) << false;
        QTest::newRow("a chunk that never ends")
            << wave(1, 1, kSoundRate, 16, QByteArray("LIST\xff\xff\xff\xff", 8)) << false;
        QTest::newRow("no wave") << QByteArray("ping") << false;
        QTest::newRow("empty") << QByteArray() << false;
    }
    void wavesAreReadFromTheirFolder()
    {
        QFETCH(QByteArray, wave);
        QFETCH(bool, good);
        QTemporaryDir folder;
        QDir(folder.path()).mkdir("motions");
        Write(folder.filePath("small.svg"), "<svg/>");
        Write(folder.filePath("figure.json"), "{}");
        Write(folder.filePath("motions/Wave.json"),
              R"({ "sounds": [[0, "ping"], [1, "lost"], [1, "../out"]] })");
        QDir(folder.path()).mkdir("sounds");
        Write(folder.filePath("sounds/ping.wav"), wave);
        Write(folder.filePath("sounds/other.wav"), wave);
        Write(folder.filePath("out.wav"), wave);
        try {
            const CharacterSource source = ReadCharacterFolder(folder.path(), folder.filePath("sounds"));
            QVERIFY(good);
            QCOMPARE(source.sounds, (QCborMap{ { "ping", QByteArray("\1\2\3\4") } }));
        } catch (const CharacterFault &fault) {
            QVERIFY2(!good, qPrintable(fault.Text()));
            QCOMPARE(fault.number, qint32(kBadSoundFile));
            QCOMPARE(fault.file, QStringLiteral("sounds/ping.wav"));
        }
        QVERIFY(ReadCharacterFolder(folder.path()).sounds.isEmpty());
    }

    void foldersAreReadInTheOrderOfTheirText()
    {
        QTemporaryDir folder;
        QDir(folder.path()).mkdir("motions");
        Write(folder.filePath("a.svg"), "<svg xmlns='http://www.w3.org/2000/svg'/>");
        Write(folder.filePath("figure.json"),
              "{ \"z\": 1, \"a\": { \"y\": [1, -2.5e1, \"q\\n\\\"\", true, null], \"b\": {} } }");
        Write(folder.filePath("motions/Wave.json"), "{}");
        const CharacterSource source = ReadCharacterFolder(folder.path());
        QCOMPARE(source.figure.keys(), (QList<QCborValue>{ "z", "a" }));
        const QCborArray list = source.figure.value("a").toMap().value("y").toArray();
        QCOMPARE(list.at(1).toDouble(), -25.0);
        QCOMPARE(list.at(2).toString(), QStringLiteral("q\n\""));
        QVERIFY(list.at(3).isTrue() && list.at(4).isNull());
        QCOMPARE(source.motions.keys(), (QList<QCborValue>{ "Wave" }));
    }

    void faultsOfAFolderNameFileAndLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("told");
        QTest::newRow("nothing") << ""
                                 << "figure.json: line 1 is no JSON: a value is missing or no number";
        QTest::newRow("no object") << "[]"
                                   << "figure.json is not a JSON object";
        QTest::newRow("no comma") << "{\n\"a\": 1\n\"b\": 2 }"
                                  << "figure.json: line 3 is no JSON: a comma or } is missing";
        QTest::newRow("twice") << "{ \"a\": 1, \"a\": 2 }"
                               << "figure.json: line 1 is no JSON: \"a\" is given twice";
        QTest::newRow("open text") << "{ \"a"
                                   << "figure.json: line 1 is no JSON: a text does not end";
        QTest::newRow("more behind") << "{}\n\n{}"
                                     << "figure.json: line 3 is no JSON: there is something behind the end";
        QTest::newRow("word") << "{ \"a\": nan }"
                              << "figure.json: line 1 is no JSON: there is an unknown word";
        QTest::newRow("huge number") << "{ \"a\": 1e999 }"
                                     << "figure.json: line 1 is no JSON: a value is missing or no number";
        QTest::newRow("deep") << QString(100, '[')
                              << "figure.json: line 1 is no JSON: it is nested too deeply";
    }
    void faultsOfAFolderNameFileAndLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, told);
        QTemporaryDir folder;
        Write(folder.filePath("a.svg"), "<svg xmlns='http://www.w3.org/2000/svg'/>");
        Write(folder.filePath("figure.json"), text.toUtf8());
        QString said;
        try {
            ReadCharacterFolder(folder.path());
        } catch (const CharacterFault &fault) {
            said = fault.Text();
        }
        QCOMPARE(said, told);
    }

private:
    static void Write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestCharacterFile)
#include "TestCharacterFile.moc"
