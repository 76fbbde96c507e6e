#include "ChmWriter.h"
#include "platform/Error.h"
#include "platform/agent/CharacterFile.h"
#include "platform/files/DiskFiles.h"
#include "platform/forms/Picture.h"
#include "platform/help/HelpBook.h"
#include "platform/media/ClipFile.h"
#include "platform/voice/SphinxRecogniser.h"
#include "support/AsOrdinaryUser.h"
#include "support/FaultyCalls.h"
#include "support/PlainDesk.h"
#include "support/SmallCharacter.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <random>
#include <set>

#include <sys/stat.h>

using namespace platform;
using support::DiskFault;
using support::FaultyCalls;

Q_DECLARE_METATYPE(DiskFault)

namespace {

const QString kWelcome = QStringLiteral("<h1>Welcome</h1><p>A hint for parents.</p>");
const QString kMore = QStringLiteral("<h1>More</h1><p>Words and questions.</p>");

void Write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

// The pictures of a clip, as many as come; none when it is no clip.
int PicturesIn(const QString &path)
{
    const std::atomic<bool> stop = false;
    const auto clip = ClipFile::Open(path, stop);
    int pictures = 0;
    while (clip && clip->NextFrame([](QSize) { return QSize(16, 16); }))
        ++pictures;
    return pictures;
}

// Half a second in which nothing is said.
QByteArray Noise()
{
    std::mt19937 chance(7);
    QByteArray samples;
    for (int index = 0; index < kSpeechRate; ++index)
        samples.append(char(chance() % 16));
    return samples;
}

} // namespace

// What libraries open by themselves: help, characters, clip, picture and the recogniser's model, on a disk
// that fails at each step. Each is there, or its usual notice, number or silence is; afterwards it is there
// again.
class TestOpenedFiles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid() && chmod(Path("").constData(), 0755) == 0); }

    void helpIsShownOrMissed_data();
    void helpIsShownOrMissed();
    void helpThatMayNotBeReadSaysSo();
    void aCharacterIsLoadedOrRefused_data() { Faults(); }
    void aCharacterIsLoadedOrRefused();
    void aCharacterThatMayNotBeReadIsMissing();
    void aClipPlaysOrEnds_data();
    void aClipPlaysOrEnds();
    void aPictureIsShownOrRefused_data() { Faults(); }
    void aPictureIsShownOrRefused();
    void whatIsNoPictureIsRefused_data();
    void whatIsNoPictureIsRefused();
    void aModelWithADamagedFileUnderstandsNothing_data();
    void aModelWithADamagedFileUnderstandsNothing();
    void aWholeModelIsNotRefused();

private:
    static void Faults()
    {
        QTest::addColumn<DiskFault>("fault");
        QTest::addColumn<bool>("isBorne");
        QTest::newRow("no permission") << DiskFault::NoPermission << false;
        QTest::newRow("gone") << DiskFault::Gone << false;
        QTest::newRow("slow") << DiskFault::Slow << true;
        QTest::newRow("short reads") << DiskFault::ShortReads << true;
        QTest::newRow("interrupted") << DiskFault::Interrupted << true;
    }
    QByteArray Path(const QString &name) const { return QFile::encodeName(m_folder.filePath(name)); }
    // Lets `attempt` run with the fault at each step, or at once when it is to be borne; it gets a name for
    // the step.
    template <class Attempt>
    void AtEachStep(DiskFault fault, bool isBorne, const Attempt &attempt)
    {
        constexpr int kMost = 300;
        int steps = 0;
        for (int hits = 1; hits > 0 && steps < (isBorne ? 1 : kMost); ++steps) {
            const FaultyCalls calls(fault, steps, QFile::encodeName(m_folder.path()));
            attempt("step " + QByteArray::number(steps + 1));
            hits = calls.Hits();
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY2(isBorne || steps > 2, "nothing has failed");
    }

    QTemporaryDir m_folder;
};

void TestOpenedFiles::helpIsShownOrMissed_data()
{
    QTest::addColumn<DiskFault>("fault");
    QTest::addColumn<bool>("isBorne");
    QTest::newRow("no permission") << DiskFault::NoPermission << false;
    QTest::newRow("gone") << DiskFault::Gone << false;
    QTest::newRow("slow") << DiskFault::Slow << true;
    // The library takes both for damage.
    QTest::newRow("short reads") << DiskFault::ShortReads << false;
    QTest::newRow("interrupted") << DiskFault::Interrupted << false;
}

void TestOpenedFiles::helpIsShownOrMissed()
{
    QFETCH(DiskFault, fault);
    QFETCH(bool, isBorne);
    const QString path = m_folder.filePath("Help.chm");
    const QByteArray contents = "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Welcome\">"
                                "<param name=\"Local\" value=\"Welcome.htm\"></OBJECT>";
    Write(path,
          WriteChm({ "Help", "Welcome.htm", "Help.hhc", "", "Help" }, { { "Welcome.htm", kWelcome.toUtf8() },
                                                                        { "More.htm", kMore.toUtf8() },
                                                                        { "Help.hhc", contents } }));
    int shown = 0;
    int missed = 0;
    AtEachStep(fault, isBorne, [&](const QByteArray &step) {
        const HelpBook book(path);
        bool isWhole = true;
        for (const auto &[name, text] :
             { std::pair(QString("Welcome.htm"), kWelcome), { QString("More.htm"), kMore } }) {
            const QString page = book.Page(name);
            const bool isNotice = page.contains("<h1>The help is missing</h1>") ||
                                  page.contains("<h1>The help cannot be read</h1>") ||
                                  page.contains("<h1>The help is damaged</h1>");
            QVERIFY2(page == text || (isNotice && page.contains("You can play without it.")),
                     step + ": " + page.toUtf8());
            isWhole = isWhole && page == text;
        }
        QVERIFY2(!isBorne || (isWhole && book.Contents().size() == 1 && book.Search("questions").size() == 1),
                 step);
        ++(isWhole ? shown : missed);
    });
    QVERIFY(isBorne ? missed == 0 : missed > 0 && shown > 0);
    QCOMPARE(HelpBook(path).Page("More.htm"), kMore);
}

void TestOpenedFiles::helpThatMayNotBeReadSaysSo()
{
    Write(m_folder.filePath("Closed.chm"),
          WriteChm({ "Help", "A.htm", "", "", "Closed" }, { { "A.htm", "<p>A</p>" } }));
    QCOMPARE(chmod(Path("Closed.chm").constData(), 0), 0);
    const support::AsOrdinaryUser user;
    const QString page = HelpBook(m_folder.filePath("Closed.chm")).Page("A.htm");
    QVERIFY2(page.contains("<h1>The help cannot be read</h1>") && page.contains("<b>Closed.chm</b>"),
             qPrintable(page));
}

void TestOpenedFiles::aCharacterIsLoadedOrRefused()
{
    QFETCH(DiskFault, fault);
    QFETCH(bool, isBorne);
    support::WriteSmallCharacter(m_folder.path(), "Merlin");
    const QString path = m_folder.filePath("Merlin.acs");
    std::set<qint32> numbers;
    AtEachStep(fault, isBorne, [&](const QByteArray &step) {
        try {
            const auto character = LoadCharacterFile(path);
            QVERIFY2(character->name == "Merlin" &&
                         character->motions.size() == support::SmallCharacter()->motions.size(),
                     step);
            numbers.insert(0);
        } catch (const Error &error) {
            numbers.insert(error.Number());
        }
    });
    // What stops in the middle of the bytes is no whole character.
    const std::set<qint32> possible = isBorne ? std::set<qint32>{ 0 }
                                      : fault == DiskFault::NoPermission
                                          ? std::set<qint32>{ 0, kAgentFileMissing }
                                          : std::set<qint32>{ 0, kAgentFileMissing, kAgentBadData };
    QCOMPARE(numbers, possible);
    QCOMPARE(LoadCharacterFile(path)->name, QStringLiteral("Merlin"));
}

void TestOpenedFiles::aCharacterThatMayNotBeReadIsMissing()
{
    support::WriteSmallCharacter(m_folder.path(), "Genie");
    QCOMPARE(chmod(Path("Genie.acs").constData(), 0), 0);
    const support::AsOrdinaryUser user;
    try {
        LoadCharacterFile(m_folder.filePath("Genie.acs"));
        QFAIL("it was loaded");
    } catch (const Error &error) {
        QCOMPARE(error.Number(), qint32(kAgentFileMissing));
    }
}

void TestOpenedFiles::aClipPlaysOrEnds_data()
{
    QTest::addColumn<DiskFault>("fault");
    QTest::addColumn<bool>("isBorne");
    QTest::newRow("no permission") << DiskFault::NoPermission << false;
    QTest::newRow("gone") << DiskFault::Gone << false;
    QTest::newRow("slow") << DiskFault::Slow << true;
    QTest::newRow("interrupted") << DiskFault::Interrupted << true;
}

void TestOpenedFiles::aClipPlaysOrEnds()
{
    QFETCH(DiskFault, fault);
    QFETCH(bool, isBorne);
    QVERIFY(QFile::exists(m_folder.filePath("clip.mpg")) ||
            QFile::copy(QStringLiteral(FIREWORKS_BEGINNING), m_folder.filePath("clip.mpg")));
    const QString path = m_folder.filePath("clip.mpg");
    const int all = PicturesIn(path);
    QVERIFY(all > 10);
    bool hasEnded = false;
    AtEachStep(fault, isBorne, [&](const QByteArray &step) {
        const int pictures = PicturesIn(path);
        QVERIFY2(pictures <= all && (!isBorne || pictures == all), step);
        hasEnded = hasEnded || pictures == 0;
    });
    QCOMPARE(hasEnded, !isBorne);
    QCOMPARE(PicturesIn(path), all);
}

void TestOpenedFiles::aPictureIsShownOrRefused()
{
    QFETCH(DiskFault, fault);
    QFETCH(bool, isBorne);
    DiskFiles files;
    const support::PlainDesk desk(&files);
    QImage picture(60, 40, QImage::Format_RGB32);
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            picture.setPixel(column, row, qRgb(row * 6, column * 4, 100));
    QVERIFY(picture.save(m_folder.filePath("TWicon4.bmp")));
    const QString path = m_folder.path() + "\\twICON4.bmp";
    std::set<qint32> numbers;
    AtEachStep(fault, isBorne, [&](const QByteArray &step) {
        try {
            const QImage shown = LoadPicture(path).toImage().convertToFormat(QImage::Format_RGB32);
            QVERIFY2(shown.size() == picture.size() && (!isBorne || shown == picture), step);
        } catch (const Error &error) {
            numbers.insert(error.Number());
        }
    });
    numbers.erase(kFileNotFound);
    numbers.erase(kPathNotFound);
    QCOMPARE(numbers, isBorne ? std::set<qint32>() : std::set<qint32>{ kInvalidPicture });
    QCOMPARE(LoadPicture(path).toImage().convertToFormat(QImage::Format_RGB32), picture);
}

void TestOpenedFiles::whatIsNoPictureIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint32>("number");
    QTest::newRow("nothing") << "none.bmp" << qint32(kFileNotFound);
    QTest::newRow("no folder") << "none\\none.bmp" << qint32(kPathNotFound);
    QTest::newRow("a folder") << "folder.bmp" << qint32(kFileNotFound);
    QTest::newRow("empty") << "empty.bmp" << qint32(kInvalidPicture);
    QTest::newRow("a letter") << "letter.bmp" << qint32(kInvalidPicture);
    QTest::newRow("only its first bytes") << "first.bmp" << qint32(kInvalidPicture);
}

void TestOpenedFiles::whatIsNoPictureIsRefused()
{
    QFETCH(QString, name);
    QFETCH(qint32, number);
    DiskFiles files;
    const support::PlainDesk desk(&files);
    QDir(m_folder.path()).mkdir("folder.bmp");
    Write(m_folder.filePath("empty.bmp"), "");
    Write(m_folder.filePath("letter.bmp"), "Dear Sir or Madam");
    Write(m_folder.filePath("first.bmp"), QByteArray("BM\x36\x1c\0\0", 6));
    qint32 raised = 0;
    try {
        LoadPicture(m_folder.path() + '\\' + name);
    } catch (const Error &error) {
        raised = error.Number();
    }
    QCOMPARE(raised, number);
}

void TestOpenedFiles::aModelWithADamagedFileUnderstandsNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("damage");
    for (const QString name : { "mdef", "means", "variances", "transition_matrices", "sendump" })
        for (const QString damage : { "missing", "empty", "closed", "a folder", "cut in its head",
                                      "cut after it", "cut in the middle", "cut at its end" })
            QTest::addRow("%s is %s", qPrintable(name), qPrintable(damage)) << name << damage;
}

namespace {

// How much that damage leaves of a file.
qint64 LeftBy(const QString &damage, qint64 size)
{
    const QMap<QString, qint64> left{ { "empty", 0 },
                                      { "cut in its head", 30 },
                                      { "cut after it", 1700 },
                                      { "cut in the middle", size / 2 },
                                      { "cut at its end", size - 1 } };
    return left.value(damage, size);
}

} // namespace

// The library would end the program over most of them.
void TestOpenedFiles::aModelWithADamagedFileUnderstandsNothing()
{
    QFETCH(QString, name);
    QFETCH(QString, damage);
    QDir usual(SphinxRecogniser::UsualModel());
    QTemporaryDir model;
    QCOMPARE(chmod(QFile::encodeName(model.path()).constData(), 0755), 0);
    for (const QString &other : usual.entryList(QDir::Files))
        if (other != name)
            QVERIFY(QFile::link(usual.filePath(other), model.filePath(other)));
    const QString path = model.filePath(name);
    QFile whole(usual.filePath(name));
    QVERIFY(whole.open(QIODevice::ReadOnly));
    if (damage == "a folder")
        QVERIFY(QDir().mkdir(path));
    else if (damage != "missing")
        Write(path, whole.read(LeftBy(damage, whole.size())));
    if (damage == "closed")
        QCOMPARE(chmod(QFile::encodeName(path).constData(), 0), 0);
    const support::AsOrdinaryUser user;
    QVERIFY(!SphinxRecogniser(model.path()).Obstacle().isEmpty());
    QCOMPARE(SphinxRecogniser::Understand(model.path(), Noise()), QStringList());
}

void TestOpenedFiles::aWholeModelIsNotRefused()
{
    QCOMPARE(SphinxRecogniser().Obstacle(), QString());
}

QTEST_MAIN(TestOpenedFiles)
#include "TestOpenedFiles.moc"
