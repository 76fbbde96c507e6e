#include "lists/KeptFile.h"
#include "lists/SpellingList.h"
#include "platform/Error.h"
#include "platform/files/DiskFiles.h"
#include "support/FaultyFiles.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <vector>

using namespace tumblewick;
using platform::FileWriting;
using support::FaultyFiles;

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
        QTEST(Content(), "plain");
        Write(lines, SpellingWriting::AlwaysUnderscored);
        QTEST(Content(), "underscored");
    }

    void moreThanTheCounterHoldsRaises6BehindTheOpening()
    {
        int asked = 0;
        const auto entry = [&](int) {
            ++asked;
            return SpellingLine{ "a", "" };
        };
        WriteSpellingList(*m_files.OpenForWriting(Path(), FileWriting::Replace, true), 32767, entry,
                          SpellingWriting::Plain);
        QCOMPARE(asked, 32767);
        QCOMPARE(Content().size(), 32767 * 3);
        QCOMPARE(Raised([&] {
                     WriteSpellingList(*m_files.OpenForWriting(Path(), FileWriting::Replace, true), 32768,
                                       entry, SpellingWriting::Plain);
                 }),
                 6);
        QCOMPARE(asked, 32767);
        QCOMPARE(Content(), QByteArray());
    }

    // Any text that the screens take comes back from every writer to every reader.
    void tenThousandListsComeBack()
    {
        QRandomGenerator random(20240229);
        for (int number = 0; number < 10000; ++number) {
            const Entries entries = Drawn(random);
            Write(entries, SpellingWriting::Plain);
            QVERIFY2(IsSame(Read(), entries), Content().toHex(' '));
            for (std::size_t at = 0; at < entries.size(); ++at) {
                const SpellingLine played = SpellingLine::ForPlay(ReadRaw()[at]);
                QCOMPARE(played.word, entries[at].word);
                QCOMPARE(played.pronunciation,
                         entries[at].pronunciation.isEmpty() ? entries[at].word : entries[at].pronunciation);
            }
            const QByteArray plain = Content();
            Write(entries, SpellingWriting::AlwaysUnderscored);
            QVERIFY2(IsSame(Read(), entries), Content().toHex(' '));
            for (std::size_t at = 0; at < entries.size(); ++at)
                QCOMPARE(SpellingLine::ForPlay(ReadRaw()[at]).pronunciation, entries[at].pronunciation);
            // And one by one to the end of the file, as they are added.
            Write({}, SpellingWriting::Plain);
            for (const SpellingLine &entry : entries) {
                const auto writer = m_files.OpenForWriting(Path(), FileWriting::Append, true);
                writer->WriteLine(entry.Line());
            }
            QCOMPARE(Content(), plain);
        }
    }

    void aListThatBreaksOffGivesWhatStoodBefore()
    {
        Write({ { "cat", "" }, { "dog", "" }, { "cow", "" } }, SpellingWriting::Plain);
        FaultyFiles faulty(m_files);
        faulty.Fail(FaultyFiles::Operation::ReadLine, platform::kDeviceError, 1, 2);
        QStringList words;
        QCOMPARE(Raised([&] {
                     ReadSpellingList(*faulty.OpenForReading(Path()),
                                      [&](const SpellingLine &line) { words << line.word; });
                 }),
                 57);
        QCOMPARE(words, QStringList({ "cat", "dog" }));
    }

    void aKeptFileIsHeldByItsPath()
    {
        Write({ { "cat", "" } }, SpellingWriting::Plain);
        const KeptFile file(m_files, m_folder.path() + "\\LISTS\\animals");
        file.OpenForAppending()->WriteLine("dog");
        QCOMPARE(Content(), QByteArray("cat\r\ndog\r\n"));
        QCOMPARE(file.OpenForReading()->ReadLine(), QString("cat"));
        file.OpenForWriting()->WriteLine("cow");
        QCOMPARE(Content(), QByteArray("cow\r\n"));
    }

    void aKeptFileThatHasGoneIsNotMadeAnew()
    {
        QCOMPARE(Raised([&] { KeptFile(m_files, Path() + "x"); }), 53);
        QCOMPARE(Raised([&] { KeptFile(m_files, m_folder.path() + "\\Lists\\"); }), 53);
        Write({ { "cat", "" } }, SpellingWriting::Plain);
        const KeptFile file(m_files, Path());
        QVERIFY(QFile::remove(Path()));
        QCOMPARE(Raised([&] { file.OpenForReading(); }), 53);
        QCOMPARE(Raised([&] { file.OpenForWriting(); }), 53);
        QCOMPARE(Raised([&] { file.OpenForAppending(); }), 53);
        QVERIFY(!QFile::exists(Path()));
        QVERIFY(QDir(m_folder.path()).rmdir("Lists"));
        QCOMPARE(Raised([&] { file.OpenForAppending(); }), 76);
        QVERIFY(QDir(m_folder.path()).mkdir("Lists"));
    }

    void initTestCase() { QVERIFY(QDir(m_folder.path()).mkdir("Lists")); }

private:
    QString Path() const { return m_folder.filePath("Lists/Animals"); }
    void Write(const Entries &entries, SpellingWriting how)
    {
        QFile::remove(Path()); // emptying a file makes some file systems wait for the disk
        const auto writer = m_files.OpenForWriting(Path(), FileWriting::Replace, true);
        WriteSpellingList(
            *writer, static_cast<int>(entries.size()),
            [&](int index) { return entries[static_cast<std::size_t>(index - 1)]; }, how);
        writer->Close();
    }
    Entries Read()
    {
        Entries entries;
        ReadSpellingList(*m_files.OpenForReading(Path()),
                         [&](const SpellingLine &line) { entries.push_back(line); });
        return entries;
    }
    std::vector<QString> ReadRaw()
    {
        std::vector<QString> lines;
        const auto reader = m_files.OpenForReading(Path());
        while (!reader->AtEnd())
            lines.push_back(reader->ReadLine());
        return lines;
    }
    QByteArray Content() const
    {
        QFile file(Path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
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
            entry.word = DrawnText(random, 1);
            entry.pronunciation = random.bounded(2) == 0 ? QString() : DrawnText(random, 1);
        }
        return entries;
    }
    // Letters of the western code, of all scripts, or of both, without what a box refuses or cannot hold.
    static QString DrawnText(QRandomGenerator &random, int atLeast)
    {
        static constexpr char32_t kTops[] = { 0x7f, 0x100, 0x2122, 0x10000, 0x110000 };
        const char32_t top = kTops[random.bounded(5)];
        QString text;
        for (int length = atLeast + static_cast<int>(random.bounded(12)); length > 0;) {
            const char32_t letter = random.bounded(static_cast<quint32>(top));
            if (letter == '_' || letter == '\r' || letter == '\n' || letter == 0xfeff ||
                (letter >= 0xd800 && letter < 0xe000))
                continue;
            text += QString::fromUcs4(&letter, 1);
            --length;
        }
        return text;
    }
    static int Raised(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const platform::Error &error) {
            return error.Number();
        }
        return 0;
    }

    QTemporaryDir m_folder;
    platform::DiskFiles m_files;
};

QTEST_GUILESS_MAIN(TestSpellingList)
#include "TestSpellingList.moc"
