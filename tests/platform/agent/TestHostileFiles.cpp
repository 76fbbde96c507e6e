#include "platform/Error.h"
#include "platform/agent/CharacterFile.h"
#include "platform/agent/DrawingCheck.h"
#include "platform/agent/MotionPlayer.h"
#include "platform/agent/Puppet.h"
#include "support/SmallCharacter.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>
#include <limits>
#include <map>
#include <set>
#include <unistd.h>

using namespace platform;

namespace {

const std::set<qint32> kKnownNumbers = { kNotACharacterFile, kCharacterFileTooOld, kCharacterFileTooNew,
                                         kAgentBadData };

constexpr char kSvg[] = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 256 256\">";

QByteArray Drawing(const QByteArray &content)
{
    return kSvg + content + "</svg>";
}

// What CheckDrawing has against it; empty when nothing.
QString Complaint(const QByteArray &drawing)
{
    try {
        CheckDrawing(drawing);
    } catch (const CharacterFault &fault) {
        return fault.Text();
    }
    return QString();
}

// Every place of the document that holds something, as a way of indexes from the top.
using Way = std::vector<qsizetype>;
void CollectWays(const QCborValue &value, const Way &way, std::vector<Way> &ways)
{
    ways.push_back(way);
    const qsizetype count = value.isMap()     ? value.toMap().size()
                            : value.isArray() ? value.toArray().size()
                                              : 0;
    for (qsizetype index = 0; index < count; ++index) {
        Way deeper = way;
        deeper.push_back(index);
        CollectWays(value.isMap() ? (value.toMap().constBegin() + index).value() : value.toArray().at(index),
                    deeper, ways);
    }
}

QCborValue Replaced(const QCborValue &value, const Way &way, const QCborValue &by, std::size_t depth = 0)
{
    if (depth == way.size())
        return by;
    if (value.isArray()) {
        QCborArray array = value.toArray();
        array[way[depth]] = Replaced(array.at(way[depth]), way, by, depth + 1);
        return array;
    }
    QCborMap map = value.toMap();
    const auto place = map.begin() + way[depth];
    place.value() = Replaced(QCborValue(place.value()), way, by, depth + 1);
    return map;
}

} // namespace

// Character files that somebody has damaged or made to do harm: each raises its number, and nothing else
// happens.
class TestHostileFiles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Each refusal is told to the person who made the file.
        QLoggingCategory::setFilterRules("tumblewick.character.warning=false");
        m_good = PackCharacter(support::SmallCharacterSource());
        QCOMPARE(NumberOf(m_good), 0);
    }

    void whatLiesInTheFoldersPlaceIsNoFile()
    {
        QTemporaryDir folder;
        const auto number = [](const QString &path) {
            try {
                LoadCharacterFile(path);
            } catch (const Error &error) {
                return error.Number();
            }
            return qint32(0);
        };
        QCOMPARE(number(folder.filePath("Merlin.acs")), qint32(kAgentFileMissing));
        QVERIFY(QDir(folder.path()).mkdir("Folder.acs"));
        QCOMPARE(number(folder.filePath("Folder.acs")), qint32(kAgentFileMissing));
        QVERIFY(QFile::link(folder.filePath("nowhere"), folder.filePath("Broken.acs")));
        QCOMPARE(number(folder.filePath("Broken.acs")), qint32(kAgentFileMissing));
        QVERIFY(QFile::link(folder.filePath("Ring.acs"), folder.filePath("Ring.acs")));
        QCOMPARE(number(folder.filePath("Ring.acs")), qint32(kAgentFileMissing));
        QVERIFY(QFile::link("/dev/zero", folder.filePath("Endless.acs")));
        QCOMPARE(number(folder.filePath("Endless.acs")), qint32(kAgentFileMissing));
        QCOMPARE(Write(folder.filePath("Empty.acs"), QByteArray()), true);
        QCOMPARE(number(folder.filePath("Empty.acs")), qint32(kNotACharacterFile));
        QCOMPARE(Write(folder.filePath("Huge.acs"), m_good.left(3)), true);
        QVERIFY(QFile::resize(folder.filePath("Huge.acs"), qint64(1) << 40));
        QCOMPARE(number(folder.filePath("Huge.acs")), qint32(kAgentBadData));
    }

    void aFileThatMayNotBeReadIsLikeAMissingOne()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("Merlin.acs");
        QVERIFY(Write(path, m_good));
        QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
        // The superuser may read everything, so he is somebody else for a moment.
        const bool mighty = geteuid() == 0;
        if (mighty) {
            QVERIFY(QFile::setPermissions(folder.path(), QFileDevice::ReadOther | QFileDevice::ExeOther));
            QCOMPARE(seteuid(65534), 0);
        }
        qint32 number = 0;
        try {
            LoadCharacterFile(path);
        } catch (const Error &error) {
            number = error.Number();
        }
        if (mighty)
            QCOMPARE(seteuid(0), 0);
        QFile::setPermissions(folder.path(),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        QCOMPARE(number, qint32(kAgentFileMissing));
    }

    void everyCutIsRefused()
    {
        for (qsizetype length = 0; length < m_good.size(); ++length) {
            const qint32 expected = length < 3 ? kNotACharacterFile : kAgentBadData;
            QCOMPARE(NumberOf(m_good.left(length)), expected);
        }
        QCOMPARE(NumberOf(m_good + m_good), 0); // what stands behind the document is not looked at
    }

    void everyPlaceWithAnythingElseIsSafe()
    {
        QCborArray deep;
        for (int depth = 0; depth < 200; ++depth)
            deep = QCborArray{ deep };
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinity = std::numeric_limits<double>::infinity();
        const QCborValue others[] = { QCborValue(nullptr),
                                      QCborValue(),
                                      0,
                                      -1,
                                      std::numeric_limits<qint64>::max(),
                                      std::numeric_limits<qint64>::min(),
                                      nan,
                                      -infinity,
                                      1e308,
                                      1e-320,
                                      true,
                                      "",
                                      "Wave",
                                      QString(100000, 'x'),
                                      QByteArray(100, '\xff'),
                                      QCborArray(),
                                      QCborMap(),
                                      QCborMap{ { 1, 2 } },
                                      deep,
                                      QCborValue(QCborTag(2), QByteArray(1000, '\x7f')) };
        constexpr std::size_t kOthers = std::size(others);
        const QCborValue document = QCborValue::fromCbor(m_good).taggedValue();
        std::vector<Way> ways;
        CollectWays(document, {}, ways);
        QVERIFY(ways.size() > 400);
        std::size_t which = 0;
        std::map<qint32, int> numbers;
        for (const Way &way : ways) {
            // Five of them for each place; in the end each kind of place has met each.
            for (int round = 0; round < 5; ++round, which = (which + 7) % kOthers) {
                const QCborValue bad =
                    QCborValue(QCborKnownTags::Signature, Replaced(document, way, others[which]));
                const qint32 number = NumberOf(bad.toCbor());
                ++numbers[number];
                QVERIFY2(number == 0 || kKnownNumbers.count(number) > 0,
                         qPrintable(QString::number(number, 16)));
            }
            which = (which + 1) % kOthers;
        }
        QVERIFY(numbers[kAgentBadData] > int(ways.size()) * 3);
    }

    void drawingsThatAreNoPlainShapesAreRefused_data()
    {
        QTest::addColumn<QByteArray>("drawing");
        const auto row = [](const char *name, const QByteArray &drawing) { QTest::newRow(name) << drawing; };
        row("nothing", "");
        row("no XML", "Hello");
        row("HTML", "<html><body/></html>");
        row("cut off", QByteArray(kSvg) + "<g id=\"a\">");
        row("closed twice", Drawing("</g>"));
        row("two of them", Drawing("") + Drawing(""));
        row("one in the other", Drawing(Drawing("")));
        row("another language's svg", "<svg xmlns=\"http://www.w3.org/1999/xhtml\"/>");
        row("not UTF-8", Drawing("<title>\xff\xfe\x80</title>"));
        row("a zero byte", Drawing(QByteArray("<g id=\"\0\"/>", 12)));
        row("entities", "<!DOCTYPE svg [<!ENTITY a \"b\">]>" + Drawing("<title>&a;</title>"));
        row("entities of entities", "<!DOCTYPE svg [<!ENTITY a \"xxxxxxxxxx\"><!ENTITY b "
                                    "\"&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;\">]>" +
                                        Drawing("<title>&c;&c;&c;</title>"));
        row("an entity from a file",
            "<!DOCTYPE svg [<!ENTITY a SYSTEM \"file:///etc/hostname\">]>" + Drawing("<title>&a;</title>"));
        row("an unknown entity", Drawing("<title>&b;</title>"));
        row("a style sheet", "<?xml-stylesheet href=\"a.css\"?>" + Drawing(""));
        row("a picture from a file",
            Drawing("<image href=\"file:///etc/hostname\" width=\"9\" height=\"9\"/>"));
        row("a picture inside", Drawing("<image href=\"data:image/png;base64,AAAA\"/>"));
        row("a use of itself",
            Drawing("<g id=\"a\"><use xmlns:xlink=\"http://www.w3.org/1999/xlink\" xlink:href=\"#a\"/></g>"));
        row("a gradient of itself", Drawing("<linearGradient id=\"a\" href=\"#a\"/>"));
        row("a script", Drawing("<script>while (1);</script>"));
        row("a handler", Drawing("<g onload=\"a()\"/>"));
        row("styles", Drawing("<style>g { fill: url(http://localhost/) }</style>"));
        row("style", Drawing("<g style=\"fill:red\"/>"));
        row("a text", Drawing("<text font-size=\"1e9\">x</text>"));
        row("a font", Drawing("<font><font-face units-per-em=\"0\"/></font>"));
        row("an animation", Drawing("<animate dur=\"1ms\" repeatCount=\"indefinite\"/>"));
        row("a filter", Drawing("<filter id=\"a\"/>"));
        row("a clip", Drawing("<clipPath id=\"a\"/>"));
        row("paint from outside", Drawing("<rect fill=\"url(http://localhost/a#b)\"/>"));
        row("paint from a file", Drawing("<rect fill=\"uRL('a.svg#b')\"/>"));
        row("endless dashes", Drawing("<path d=\"M0 0H9999\" stroke-dasharray=\"0.00001\"/>"));
        row("a huge number", Drawing("<rect width=\"1234567\"/>"));
        row("a huge power", Drawing("<path d=\"M0 0H1e9\"/>"));
        row("a huge scale", Drawing("<g transform=\"scale(999999999)\"/>"));
        QByteArray deep = kSvg;
        for (int depth = 0; depth < 100000; ++depth)
            deep += "<g>";
        row("nested without end", deep);
        QByteArray many;
        for (int element = 0; element < 21000; ++element)
            many += "<g/>";
        row("too many elements", Drawing(many));
        row("too large", Drawing(QByteArray(5000000, ' ')));
    }
    void drawingsThatAreNoPlainShapesAreRefused()
    {
        QFETCH(QByteArray, drawing);
        QVERIFY(!Complaint(drawing).isEmpty());
        CharacterSource source = support::SmallCharacterSource();
        source.drawing = drawing;
        QCOMPARE(NumberOf(PackCharacter(source)), qint32(kAgentBadData));
    }

    void drawingsOfPlainShapesPass()
    {
        QCOMPARE(Complaint(support::SmallCharacterSource().drawing), QString());
        QCOMPARE(Complaint(Drawing("<title>Merlin</title><defs><radialGradient id=\"a\"><stop offset=\"1\" "
                                   "stop-color=\"#1e5555\"/></radialGradient></defs><g id=\"g1234567\">"
                                   "<path d=\"M-12.123456789 1e-7L3,4Z\" fill=\"url(#a)\"/></g>")),
                 QString());
    }

    void groupsThatLieFarAwayOrFillEverythingAreRefused()
    {
        CharacterSource far = support::SmallCharacterSource();
        far.drawing.replace("<rect x=\"190\"", "<rect x=\"9190\"");
        QVERIFY(far.drawing != support::SmallCharacterSource().drawing);
        QCOMPARE(NumberOf(PackCharacter(far)), qint32(kAgentBadData));

        // Forty-four parts, each as large as may be.
        CharacterSource large = support::SmallCharacterSource();
        QCborArray parts = large.figure.value("parts").toArray();
        QByteArray groups;
        for (int part = 0; part < 44; ++part) {
            const QString name = QStringLiteral("large%1").arg(part);
            groups += QStringLiteral(
                          "<g id=\"%1\"><rect x=\"-500\" y=\"-500\" width=\"1000\" height=\"1000\"/></g>")
                          .arg(name)
                          .toUtf8();
            parts.append(QCborMap{ { "name", name }, { "parent", "body" }, { "pivot", QCborArray{ 0, 0 } } });
        }
        large.figure[QStringLiteral("parts")] = parts;
        large.drawing.replace("</svg>", groups + "</svg>");
        QCOMPARE(NumberOf(PackCharacter(large)), qint32(kAgentBadData));
    }

    void twentyThousandDamagedFilesAreSafe()
    {
        // The time is bounded for slow machines with checks built in; fast ones do them all.
        constexpr int kFiles = 20000;
        constexpr qint64 kMostTime = 40000; // milliseconds
        quint32 random = 12345;
        const auto draw = [&random](qsizetype count) {
            random = random * 1664525 + 1013904223;
            return qsizetype((random >> 8) % quint32(count));
        };
        std::map<qint32, int> numbers;
        QElapsedTimer taken;
        taken.start();
        int files = 0;
        for (; files < kFiles && taken.elapsed() < kMostTime; ++files) {
            QByteArray bad = m_good;
            const int changes = 1 + int(draw(4));
            for (int change = 0; change < changes; ++change) {
                const qsizetype at = draw(bad.size());
                switch (draw(8)) {
                case 0:
                    bad.truncate(at + 1);
                    break;
                case 1:
                    bad.remove(at, 1 + draw(8));
                    break;
                case 2:
                    bad.insert(at, m_good.mid(draw(m_good.size()), draw(40)));
                    break;
                case 3:
                    bad[at] = char(draw(256));
                    break;
                default:
                    bad[at] = char(bad[at] ^ (1 << draw(8)));
                }
                if (bad.isEmpty())
                    break;
            }
            std::shared_ptr<const CharacterData> character;
            const qint32 number = NumberOf(bad, &character);
            ++numbers[number];
            QVERIFY2(number == 0 || kKnownNumbers.count(number) > 0, qPrintable(QString::number(number, 16)));
            // Whatever is let in can be played and drawn.
            if (character && numbers[0] % 40 == 0)
                Play(character);
        }
        qInfo("%d files in %.1f s: %d read, %d bad data, %d no character file, %d of another version", files,
              double(taken.elapsed()) / 1000, numbers[0], numbers[kAgentBadData], numbers[kNotACharacterFile],
              numbers[kCharacterFileTooOld] + numbers[kCharacterFileTooNew]);
        QVERIFY(files > 1000);
        QVERIFY(numbers[0] > 20); // a digit of a colour or of a number
        QVERIFY(numbers[kAgentBadData] > files / 2);
    }

private:
    static bool Write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    static qint32 NumberOf(const QByteArray &file, std::shared_ptr<const CharacterData> *character = nullptr)
    {
        try {
            const auto read = CharacterFromFile(file);
            if (character)
                *character = read;
        } catch (const Error &error) {
            return error.Number();
        }
        return 0;
    }

    static void Play(const std::shared_ptr<const CharacterData> &character)
    {
        MotionPlayer player(character);
        Puppet puppet(character);
        puppet.SetSize(QSize(64, 64));
        for (const auto &[name, motion] : character->motions) {
            player.Play(motion);
            for (const double step : { 0.0, 0.02, 0.5, 3.0 }) {
                player.Advance(step, QPointF(step, -step));
                puppet.Draw(player.Shown(), player.Frames());
            }
        }
    }

    QByteArray m_good;
};

QTEST_MAIN(TestHostileFiles)
#include "TestHostileFiles.moc"
