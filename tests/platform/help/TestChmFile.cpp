// Compiled help files: what is written can be read, and whatever else is read does no harm.

#include "ChmWriter.h"
#include "platform/help/ChmFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <random>

using namespace platform;

namespace {

const std::map<QString, QByteArray> kPages = {
    { "Introduction.htm", "<html><body>Welcome</body></html>" },
    { "Adding, Editing and Deleting Lists.htm", "<p>Lists</p>" },
    { "pictures/menu.png", QByteArray("\x89PNG\0\r\n\x1a", 8) },
    { "Größe.htm", "<p>Gr\xc3\xb6\xc3\x9f\x65</p>" },
    { "Old.htm", "<p>caf\xe9</p>" },
    { "empty.css", "" },
};

HelpHeader Header()
{
    return { "A title", "Introduction.htm", "Test.hhc", "Test.hhk", "Test" };
}

std::map<QString, QByteArray> ManyPages()
{
    std::map<QString, QByteArray> pages;
    for (int number = 0; number < 2000; ++number)
        pages[QStringLiteral("A page with a rather long name, number %1.htm").arg(number)] =
            QByteArray::number(number * 7);
    return pages;
}

QByteArray With(QByteArray bytes, qsizetype place, const QByteArray &other)
{
    return bytes.replace(place, other.size(), other);
}

} // namespace

class TestChmFile : public QObject {
    Q_OBJECT

private slots:
    void everyPageComesBackByteForByte()
    {
        const ChmFile file(Write(WriteChm(Header(), kPages)));
        for (const auto &[name, bytes] : kPages) {
            QVERIFY2(file.Has(name), qPrintable(name));
            QCOMPARE(file.Read(name), bytes);
        }
        QCOMPARE(file.StartPage(), QString("Introduction.htm"));
        QCOMPARE(file.ContentsFile(), QString("Test.hhc"));
        QCOMPARE(file.IndexFile(), QString("Test.hhk"));
    }

    void pagesAreThoseWithText()
    {
        const ChmFile file(Write(WriteChm(Header(), kPages)));
        QCOMPARE(file.Pages(), QStringList({ "Adding, Editing and Deleting Lists.htm", "Größe.htm",
                                             "Introduction.htm", "Old.htm" }));
    }

    void namesAreFoundInAnyLetterCaseAndWithASlashBefore()
    {
        const ChmFile file(Write(WriteChm(Header(), kPages)));
        QCOMPARE(file.Read("INTRODUCTION.HTM"), kPages.at("Introduction.htm"));
        QCOMPARE(file.Read("/Pictures/Menu.png"), kPages.at("pictures/menu.png"));
    }

    void textIsReadAsItWasMeant()
    {
        const ChmFile file(Write(WriteChm(Header(), kPages)));
        QCOMPARE(file.ReadText("Größe.htm"), QString::fromUtf8("<p>Größe</p>"));
        QCOMPARE(file.ReadText("Old.htm"), QString::fromUtf8("<p>café</p>"));
    }

    void thousandsOfPagesAreFoundByTheirTree()
    {
        const auto pages = ManyPages();
        const ChmFile file(Write(WriteChm(Header(), pages)));
        for (const auto &[name, bytes] : pages)
            QCOMPARE(file.Read(name), bytes);
        QCOMPARE(file.Pages().size(), qsizetype(pages.size()));
    }

    // For other readers; the window has a title of its own.
    void theTitleIsWritten() { QVERIFY(WriteChm(Header(), kPages).contains("A title")); }

    void theSamePagesGiveTheSameBytes() { QCOMPARE(WriteChm(Header(), kPages), WriteChm(Header(), kPages)); }

    void aPageThatIsNotThere()
    {
        const ChmFile file(Write(WriteChm(Header(), kPages)));
        for (const QString name : { "Nowhere.htm", "", "/", "pictures", "pictures/" }) {
            QVERIFY(!file.Has(name));
            QCOMPARE(Reading(file, name), int(ChmFault::kNoPage));
        }
    }

    void whatCannotBeOpened_data()
    {
        const QByteArray good = WriteChm(Header(), kPages);
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("fault");
        QTest::newRow("empty") << QByteArray() << int(ChmFault::kNotHelp);
        QTest::newRow("a letter") << QByteArray("Dear Sir or Madam") << int(ChmFault::kNotHelp);
        QTest::newRow("the first bytes alone") << good.left(20) << int(ChmFault::kDamaged);
        QTest::newRow("no directory") << good.left(0x70) << int(ChmFault::kDamaged);
        QTest::newRow("half of the directory") << good.left(0x800) << int(ChmFault::kDamaged);
        QTest::newRow("the last byte is missing") << good.chopped(1) << int(ChmFault::kDamaged);
        QTest::newRow("a directory far away")
            << With(good, 0x48, QByteArray(8, '\x7f')) << int(ChmFault::kDamaged);
        QTest::newRow("a directory without chunks")
            << With(good, good.indexOf("ITSP") + 0x2c, QByteArray(4, '\0')) << int(ChmFault::kDamaged);
        QTest::newRow("chunks of no size")
            << With(good, good.indexOf("ITSP") + 0x10, QByteArray(4, '\0')) << int(ChmFault::kDamaged);
        QTest::newRow("a chunk that follows itself")
            << With(good, good.indexOf("PMGL") + 0x10, QByteArray(4, '\0')) << int(ChmFault::kDamaged);
        QTest::newRow("more unused than there is")
            << With(good, good.indexOf("PMGL") + 4, QByteArray(4, '\xff')) << int(ChmFault::kDamaged);
        QTest::newRow("a name longer than its chunk")
            << With(good, good.indexOf("PMGL") + 0x14, QByteArray("\x83\x7f", 2)) << int(ChmFault::kDamaged);
        const QByteArray page = "/Old.htm";
        QTest::newRow("packed content") << With(good, good.indexOf(page) + page.size(), QByteArray(1, '\1'))
                                        << int(ChmFault::kUnreadable);
        QTest::newRow("content behind the end")
            << With(good, good.indexOf(page) + page.size() + 1, QByteArray(1, '\xff'))
            << int(ChmFault::kDamaged);
    }
    void whatCannotBeOpened()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, fault);
        QCOMPARE(Opening(Write(bytes)), fault);
    }

    void aFileThatIsMissingOrAFolder()
    {
        QCOMPARE(Opening(m_folder.filePath("nothing.chm")), int(ChmFault::kMissing));
        QCOMPARE(Opening(m_folder.path()), int(ChmFault::kUnreadable));
    }

    // What comes of damage is a fault or pages, never a crash, a hang or memory without end.
    void damageDoesNoHarm()
    {
        std::mt19937 chance(20);
        int opened = 0;
        int refused = 0;
        for (const QByteArray &good : { WriteChm(Header(), kPages), WriteChm(Header(), ManyPages()) }) {
            const int attempts = good.size() < 10000 ? 1200 : 150;
            for (int attempt = 0; attempt < attempts; ++attempt) {
                QByteArray bytes = good;
                if (attempt % 5 == 0)
                    bytes.truncate(qsizetype(chance() % bytes.size()));
                // Half of the damage hits the part that says where everything lies.
                const int places = 1 + int(chance() % 6);
                for (int place = 0; place < places && !bytes.isEmpty(); ++place) {
                    const qsizetype reach =
                        chance() % 2 ? qMin<qsizetype>(bytes.size(), 0x1c0) : bytes.size();
                    bytes[qsizetype(chance() % reach)] = char(chance());
                }
                try {
                    const ChmFile file(Write(bytes));
                    ++opened;
                    for (const QString &page : file.Pages().mid(0, 20))
                        Reading(file, page);
                    Reading(file, file.ContentsFile());
                } catch (const ChmFault &) {
                    ++refused;
                }
            }
        }
        QVERIFY2(opened > 100 && refused > 100,
                 qPrintable(QString("opened %1, refused %2").arg(opened).arg(refused)));
    }

private:
    QString Write(const QByteArray &bytes)
    {
        const QString path = m_folder.filePath("Tést help.chm");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("the help file cannot be written");
        return path;
    }
    static int Opening(const QString &path)
    {
        try {
            ChmFile file(path);
        } catch (const ChmFault &fault) {
            return fault.Reason();
        }
        return -1;
    }
    static int Reading(const ChmFile &file, const QString &name)
    {
        try {
            file.Read(name);
        } catch (const ChmFault &fault) {
            return fault.Reason();
        }
        return -1;
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestChmFile)
#include "TestChmFile.moc"
