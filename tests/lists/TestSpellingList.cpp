#include "lists/KeptFile.h"
#include "lists/ListFiles.h"
#include "lists/SpellingList.h"
#include "platform/files/TextCode.h"
#include "support/FaultyFiles.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>
#include <vector>

using namespace tumblewick;
using platform::FileWriting;
using support::DrawnText;
using support::FaultyFiles;
using support::ListFiles;
using support::NumberRaised;

namespace {

using Entries = std::vector<SpellingLine>;

} // namespace

// The file of a spelling list: what is written, byte by byte, and what comes back.
class TestSpellingList : public QObject {
    Q_OBJECT

private slots:
    void aLineIsTakenApartForEditing_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("pronunciation");
        QTest::newRow("word alone") << "cat"
                                    << "cat"
                                    << "";
        QTest::newRow("word and pronunciation") << "knight_nite"
                                                << "knight"
                                                << "nite";
        QTest::newRow("empty pronunciation") << "cat_"
                                             << "cat"
                                             << "";
        QTest::newRow("blank line") << ""
                                    << ""
                                    << "";
        QTest::newRow("begins with an underscore") << "_nite"
                                                   << ""
                                                   << "nite";
        QTest::newRow("several underscores") << "a_b_c_"
                                             << "a"
                                             << "b_c_";
        QTest::newRow("nothing is trimmed") << " cat _ kat "
                                            << " cat "
                                            << " kat ";
    }
    void aLineIsTakenApartForEditing()
    {
        QFETCH(QString, line);
        const SpellingLine split = SpellingLine::ForEdit(line);
        QTEST(split.word, "word");
        QTEST(split.pronunciation, "pronunciation");
    }

    void theFileIsExact_data()
    {
        QTest::addColumn<QStringList>("entries"); // as lines
        QTest::addColumn<QByteArray>("plain");
        QTest::addColumn<QByteArray>("underscored");
        QTest::newRow("one word") << QStringList({ "cat" }) << QByteArray("cat\r\n")
                                  << QByteArray("cat_\r\n");
        QTest::newRow("no words") << QStringList() << QByteArray() << QByteArray();
        QTest::newRow("words and a pronunciation")
            << QStringList({ "sun", "knight_nite", "sun" }) << QByteArray("sun\r\nknight_nite\r\nsun\r\n")
            << QByteArray("sun_\r\nknight_nite\r\nsun_\r\n");
        QTest::newRow("an accent is one byte")
            << QStringList({ "caf\u00e9_kaf\u00e9" }) << QByteArray("caf\xe9_kaf\xe9\r\n")
            << QByteArray("caf\xe9_kaf\xe9\r\n");
        QTest::newRow("what that code has not is UTF-8, line by line")
            << QStringList({ QString("\u0434\u043e\u043c"), "na\u00efve" })
            << QByteArray("\xd0\xb4\xd0\xbe\xd0\xbc\r\nna\xefve\r\n")
            << QByteArray("\xd0\xb4\xd0\xbe\xd0\xbc_\r\nna\xefve_\r\n");
        QTest::newRow("a blank is a pronunciation")
            << QStringList({ "cat_ " }) << QByteArray("cat_ \r\n") << QByteArray("cat_ \r\n");
        QTest::newRow("blanks stay") << QStringList({ " two words _ t " })
                                     << QByteArray(" two words _ t \r\n")
                                     << QByteArray(" two words _ t \r\n");
    }
    void theFileIsExact()
    {
        QFETCH(QStringList, entries);
        Entries lines;
        for (const QString &entry : entries)
            lines.push_back(SpellingLine::ForEdit(entry));
        Write(lines, SpellingWriting::Plain);
        QTEST(m_files.Content(), "plain");
        Write(lines, SpellingWriting::AlwaysUnderscored);
        QTEST(m_files.Content(), "underscored");
    }

    void moreThanTheCounterHoldsRaises6BehindTheOpening()
    {
        int asked = 0;
        const auto entry = [&](int) {
            ++asked;
            return SpellingLine{ "a", "" };
        };
        WriteSpellingList(*m_files.disk.OpenForWriting(m_files.Path(), FileWriting::Replace, true), 32767,
                          entry, SpellingWriting::Plain);
        QCOMPARE(asked, 32767);
        QCOMPARE(m_files.Content().size(), 32767 * 3);
        QCOMPARE(NumberRaised([&] {
                     WriteSpellingList(
                         *m_files.disk.OpenForWriting(m_files.Path(), FileWriting::Replace, true), 32768,
                         entry, SpellingWriting::Plain);
                 }),
                 6);
        QCOMPARE(asked, 32767);
        QCOMPARE(m_files.Content(), QByteArray());
    }

    // Any text that the screens take comes back from every writer to every reader, of each tenth list also by
    // way of another folder.
    void tenThousandListsComeBack()
    {
        QRandomGenerator random(20240229);
        int empty = 0;
        int ofBytes = 0;
        int ofUtf8 = 0;
        for (int number = 0; number < 10000; ++number) {
            const Entries entries = Drawn(random);
            empty += entries.empty();
            Write(entries, SpellingWriting::Plain);
            const QByteArray plain = m_files.Content();
            for (int journey = 0; journey < (number % 10 == 0 ? 2 : 1); ++journey) {
                if (journey > 0)
                    m_files.ExportAndImport();
                QVERIFY2(IsSame(Read(), entries), plain.toHex(' '));
                const QStringList lines = m_files.Lines();
                QCOMPARE(std::size_t(lines.size()), entries.size());
                for (std::size_t at = 0; at < entries.size(); ++at) {
                    const SpellingLine played = SpellingLine::ForPlay(lines[int(at)]);
                    QCOMPARE(played.word, entries[at].word);
                    QCOMPARE(played.pronunciation, entries[at].pronunciation.isEmpty()
                                                       ? entries[at].word
                                                       : entries[at].pronunciation);
                    const QByteArray bytes = platform::EncodedLine(lines[int(at)]);
                    ofUtf8 += bytes == lines[int(at)].toUtf8();
                    ofBytes += bytes != lines[int(at)].toUtf8();
                }
            }
            // One by one to the end of the file, as they are added.
            Write({}, SpellingWriting::Plain);
            const KeptFile kept(m_files.disk, m_files.Path());
            for (const SpellingLine &entry : entries)
                kept.OpenForAppending()->WriteLine(entry.Line());
            QCOMPARE(m_files.Content(), plain);
            // And as they stand behind a removal.
            Write(entries, SpellingWriting::AlwaysUnderscored);
            QVERIFY2(IsSame(Read(), entries), m_files.Content().toHex(' '));
            const QStringList lines = m_files.Lines();
            for (std::size_t at = 0; at < entries.size(); ++at) {
                QCOMPARE(SpellingLine::ForPlay(lines[int(at)]).word, entries[at].word);
                QCOMPARE(SpellingLine::ForPlay(lines[int(at)]).pronunciation, entries[at].pronunciation);
            }
        }
        // The draw has had some of everything.
        QVERIFY(empty > 1000);
        QVERIFY(ofBytes > 1000 && ofUtf8 > 1000);
    }

    void aListThatBreaksOffGivesWhatStoodBefore()
    {
        Write({ { "cat", "" }, { "dog", "" }, { "cow", "" } }, SpellingWriting::Plain);
        FaultyFiles faulty(m_files.disk);
        faulty.Fail(FaultyFiles::Operation::ReadLine, platform::kDeviceError, 1, 2);
        QStringList words;
        QCOMPARE(NumberRaised([&] {
                     ReadSpellingList(*faulty.OpenForReading(m_files.Path()),
                                      [&](const SpellingLine &line) { words << line.word; });
                 }),
                 57);
        QCOMPARE(words, QStringList({ "cat", "dog" }));
    }

    void aKeptFileIsHeldByItsPath()
    {
        Write({ { "cat", "" } }, SpellingWriting::Plain);
        const KeptFile file(m_files.disk, m_files.folder.path() + "\\LISTS\\animals");
        file.OpenForAppending()->WriteLine("dog");
        QCOMPARE(m_files.Content(), QByteArray("cat\r\ndog\r\n"));
        QCOMPARE(file.OpenForReading()->ReadLine(), QString("cat"));
        file.OpenForWriting()->WriteLine("cow");
        QCOMPARE(m_files.Content(), QByteArray("cow\r\n"));
    }

    void aKeptFileThatHasGoneIsNotMadeAnew()
    {
        QCOMPARE(NumberRaised([&] { KeptFile(m_files.disk, m_files.Path() + "x"); }), 53);
        QCOMPARE(NumberRaised([&] { KeptFile(m_files.disk, m_files.folder.path() + "\\Lists\\"); }), 53);
        Write({ { "cat", "" } }, SpellingWriting::Plain);
        const KeptFile file(m_files.disk, m_files.Path());
        QVERIFY(QFile::remove(m_files.Path()));
        QCOMPARE(NumberRaised([&] { file.OpenForReading(); }), 53);
        QCOMPARE(NumberRaised([&] { file.OpenForWriting(); }), 53);
        QCOMPARE(NumberRaised([&] { file.OpenForAppending(); }), 53);
        QVERIFY(!QFile::exists(m_files.Path()));
        QVERIFY(QDir(m_files.folder.path()).rmdir("Lists"));
        QCOMPARE(NumberRaised([&] { file.OpenForAppending(); }), 76);
        QVERIFY(QDir(m_files.folder.path()).mkdir("Lists"));
    }

private:
    void Write(const Entries &entries, SpellingWriting how)
    {
        const auto writer = m_files.NewFile();
        WriteSpellingList(
            *writer, static_cast<int>(entries.size()),
            [&](int index) { return entries[static_cast<std::size_t>(index - 1)]; }, how);
        writer->Close();
    }
    Entries Read()
    {
        Entries entries;
        ReadSpellingList(*m_files.disk.OpenForReading(m_files.Path()),
                         [&](const SpellingLine &line) { entries.push_back(line); });
        return entries;
    }
    static bool IsSame(const Entries &left, const Entries &right)
    {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [](const SpellingLine &one, const SpellingLine &other) {
                              return one.word == other.word && one.pronunciation == other.pronunciation;
                          });
    }
    static Entries Drawn(QRandomGenerator &random)
    {
        Entries entries(random.bounded(6));
        for (SpellingLine &entry : entries) {
            entry.word = DrawnText(random);
            entry.pronunciation = random.bounded(2) == 0 ? QString() : DrawnText(random);
        }
        return entries;
    }

    ListFiles m_files;
};

QTEST_GUILESS_MAIN(TestSpellingList)
#include "TestSpellingList.moc"
