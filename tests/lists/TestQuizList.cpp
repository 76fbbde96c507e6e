#include "lists/KeptFile.h"
#include "lists/ListFiles.h"
#include "lists/QuizLine.h"
#include "lists/QuizList.h"
#include "support/FaultyFiles.h"

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

using Entries = std::vector<QuizEntry>;

QuizEntry EntryOf(const QStringList &fields)
{
    QuizEntry entry{ fields[0], {}, {} };
    for (int number = 1; number <= QuizEntry::kSubItems; ++number)
        entry.SubItem(number) = fields[number];
    return entry;
}

QStringList FieldsOf(const QuizEntry &entry)
{
    QStringList fields{ entry.question };
    for (int number = 1; number <= QuizEntry::kSubItems; ++number)
        fields << entry.SubItem(number);
    return fields;
}

} // namespace

// The file of a quiz: what is written, byte by byte, and what comes back.
class TestQuizList : public QObject {
    Q_OBJECT

private slots:
    void aQuestionIsOneExactLine_data()
    {
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("the plainest") << QStringList({ "What is 2+2?", "1", "2", "3", "4", "4" })
                                      << QByteArray("What is 2+2?_1_2_3_4_4_\r\n");
        QTest::newRow("empty fields") << QStringList({ "", "", "", "", "", "" }) << QByteArray("______\r\n");
        QTest::newRow("blanks stay") << QStringList({ " Q ", " a", "b ", " ", "d d", "1" })
                                     << QByteArray(" Q _ a_b _ _d d_1_\r\n");
        QTest::newRow("an accent is one byte") << QStringList({ "Caf\u00e9?", "a", "b", "c", "d", "1" })
                                               << QByteArray("Caf\xe9?_a_b_c_d_1_\r\n");
        QTest::newRow("what that code has not is UTF-8, the whole line")
            << QStringList({ QString("Caf\u00e9?"), QString("\u0434"), "b", "c", "d", "1" })
            << QByteArray("Caf\xc3\xa9?_\xd0\xb4_b_c_d_1_\r\n");
        QTest::newRow("a line break is two lines") << QStringList({ "What\r\nis?", "a", "b", "c", "d", "2" })
                                                   << QByteArray("What\r\nis?_a_b_c_d_2_\r\n");
    }
    void aQuestionIsOneExactLine()
    {
        QFETCH(QStringList, fields);
        Write({ EntryOf(fields) });
        QTEST(m_files.Content(), "bytes");
        Write({ EntryOf(fields), EntryOf(fields) });
        QFETCH(QByteArray, bytes);
        QCOMPARE(m_files.Content(), bytes + bytes);
    }

    void noQuestionsAreNoBytes()
    {
        Write({});
        QCOMPARE(m_files.Content(), QByteArray());
        QCOMPARE(Read().size(), std::size_t(0));
    }

    // What is given before the reading breaks off stays.
    void linesAreTakenApartForEditing_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("entries"); // their fields, a bar between two
        QTest::addColumn<int>("raised");
        const QByteArray good = "Q_a_b_c_d_2_\r\n";
        const QString goodFields = "Q|a|b|c|d|2";
        QTest::newRow("sound") << good << QStringList({ goodFields }) << 0;
        QTest::newRow("empty fields") << QByteArray("______\r\n") << QStringList({ "|||||" }) << 0;
        QTest::newRow("the number is shown as it stands")
            << QByteArray("Q_a_b_c_d_31 and more_\r\nQ_a_b_c_d_x_\r\n")
            << QStringList({ "Q|a|b|c|d|31 and more", "Q|a|b|c|d|x" }) << 0;
        QTest::newRow("what follows the sixth underscore is dropped")
            << QByteArray("Q_a_b_c_d_2_x_y\r\n") << QStringList({ goodFields }) << 0;
        QTest::newRow("without an end of the line")
            << QByteArray("Q_a_b_c_d_2_") << QStringList({ goodFields }) << 0;
        QTest::newRow("ends of other systems")
            << QByteArray("Q_a_b_c_d_2_\nQ_a_b_c_d_2_\r") << QStringList({ goodFields, goodFields }) << 0;
        QTest::newRow("zero bytes") << QByteArray() << QStringList() << 0;
        QTest::newRow("blank line") << good + "\r\n" + good << QStringList({ goodFields }) << 5;
        QTest::newRow("no underscore") << good + "What?\r\n" + good << QStringList({ goodFields }) << 5;
        QTest::newRow("one underscore")
            << good + "Q_a\r\n" + good << QStringList({ goodFields, "Q|||||" }) << 5;
        QTest::newRow("an underscore at the end") << QByteArray("Q_\r\n") << QStringList({ "Q|||||" }) << 5;
        QTest::newRow("three underscores")
            << QByteArray("Q_a_b_c\r\n") + good << QStringList({ "Q|a|b|||" }) << 5;
        QTest::newRow("five underscores and no trailing one")
            << good + "Q_a_b_c_d_3\r\n" + good << QStringList({ goodFields, "Q|a|b|c|d|" }) << 5;
        QTest::newRow("a question over two lines") << good + "What\r\nis?_a_b_c_d_2_\r\n"
                                                   << QStringList({ goodFields }) << 5;
    }
    void linesAreTakenApartForEditing()
    {
        QFETCH(QByteArray, bytes);
        QFile file(m_files.Path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        Entries entries;
        const int number =
            NumberRaised([&] { ReadInto(entries, *m_files.disk.OpenForReading(m_files.Path())); });
        QStringList seen;
        for (const QuizEntry &entry : entries)
            seen << FieldsOf(entry).join('|');
        QTEST(seen, "entries");
        QTEST(number, "raised");
    }

    void aFileStrippedOfItsLastUnderscorePlaysButCannotBeEdited()
    {
        const QString line = "Q_a_b_c_d_3";
        QCOMPARE(int(QuizLine::ForPlay(line).correct), 3);
        QFile file(m_files.Path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(line.toLatin1() + "\r\n");
        file.close();
        QCOMPARE(NumberRaised([&] { Read(); }), 5);
    }

    void moreThanTheCounterHoldsRaises6BehindTheOpening()
    {
        int asked = 0;
        const auto entry = [&](int) {
            ++asked;
            return EntryOf({ "Q", "a", "b", "c", "d", "1" });
        };
        WriteQuiz(*m_files.disk.OpenForWriting(m_files.Path(), FileWriting::Replace, true), 32767, entry);
        QCOMPARE(asked, 32767);
        QCOMPARE(m_files.Content().size(), 32767 * 14);
        QCOMPARE(NumberRaised([&] {
                     WriteQuiz(*m_files.disk.OpenForWriting(m_files.Path(), FileWriting::Replace, true),
                               32768, entry);
                 }),
                 6);
        QCOMPARE(asked, 32767);
        QCOMPARE(m_files.Content(), QByteArray());
    }

    // Any text that the screens take comes back from every writer to every reader, of each tenth list also by
    // way of another folder.
    void tenThousandQuizzesComeBack()
    {
        QRandomGenerator random(20240301);
        int empty = 0;
        for (int number = 0; number < 10000; ++number) {
            const Entries entries = Drawn(random);
            empty += entries.empty();
            Write(entries);
            const QByteArray whole = m_files.Content();
            for (int journey = 0; journey < (number % 10 == 0 ? 2 : 1); ++journey) {
                if (journey > 0)
                    m_files.ExportAndImport();
                const Entries read = Read();
                QCOMPARE(read.size(), entries.size());
                const QStringList lines = m_files.Lines();
                QCOMPARE(std::size_t(lines.size()), entries.size());
                for (std::size_t at = 0; at < entries.size(); ++at) {
                    QCOMPARE(FieldsOf(read[at]), FieldsOf(entries[at]));
                    const QuizLine played = QuizLine::ForPlay(lines[int(at)]);
                    QCOMPARE(played.question, entries[at].question);
                    QCOMPARE(played.answers, entries[at].answers);
                    QCOMPARE(QString::number(played.correct), entries[at].correct);
                }
            }
            // And one by one to the end of the file, as they are added.
            Write({});
            const KeptFile kept(m_files.disk, m_files.Path());
            for (const QuizEntry &entry : entries)
                kept.OpenForAppending()->WriteLine(entry.Line());
            QCOMPARE(m_files.Content(), whole);
        }
        QVERIFY(empty > 1000);
    }

    void aReaderThatFailsGivesWhatStoodBefore()
    {
        const QuizEntry entry = EntryOf({ "Q", "a", "b", "c", "d", "1" });
        Write({ entry, entry, entry });
        FaultyFiles faulty(m_files.disk);
        faulty.Fail(FaultyFiles::Operation::ReadLine, platform::kDeviceError, 1, 2);
        Entries entries;
        QCOMPARE(NumberRaised([&] { ReadInto(entries, *faulty.OpenForReading(m_files.Path())); }), 57);
        QCOMPARE(entries.size(), std::size_t(2));
    }

    void aFieldThatIsNotThereRaises()
    {
        QuizEntry entry;
        for (const int number : { 0, 6, -1 })
            QCOMPARE(NumberRaised([&] { entry.SubItem(number).clear(); }), 9);
    }

private:
    void Write(const Entries &entries)
    {
        const auto writer = m_files.NewFile();
        WriteQuiz(*writer, static_cast<int>(entries.size()),
                  [&](int index) { return entries[static_cast<std::size_t>(index - 1)]; });
        writer->Close();
    }
    static void ReadInto(Entries &entries, platform::TextReader &reader)
    {
        ReadQuiz(reader, { [&](const QString &question) {
                              entries.push_back({ question, {}, {} });
                          },
                           [&](int number, const QString &text) { entries.back().SubItem(number) = text; } });
    }
    Entries Read()
    {
        Entries entries;
        ReadInto(entries, *m_files.disk.OpenForReading(m_files.Path()));
        return entries;
    }
    static Entries Drawn(QRandomGenerator &random)
    {
        Entries entries(random.bounded(6));
        for (QuizEntry &entry : entries) {
            entry.question = DrawnText(random);
            for (QString &answer : entry.answers)
                answer = DrawnText(random);
            entry.correct = QString::number(1 + random.bounded(4));
        }
        return entries;
    }

    ListFiles m_files;
};

QTEST_GUILESS_MAIN(TestQuizList)
#include "TestQuizList.moc"
