#include "FolderContent.h"
#include "platform/agent/SettingsStore.h"
#include "support/AsOrdinaryUser.h"
#include "support/FaultyCalls.h"
#include "support/FullDisk.h"
#include "support/KeptLog.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLockFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <sys/stat.h>

#include <optional>
#include <thread>

using namespace platform;
using support::DiskFault;
using support::FaultyCalls;

Q_DECLARE_METATYPE(DiskFault)

namespace {

ServiceOptions Before()
{
    ServiceOptions options;
    options.balloonTextSize = 24;
    options.speakingRate = 2;
    options.characters = { { "Genie", { "cmu_us_slt", 3 } } };
    options.microphone = "the old one";
    return options;
}

ServiceOptions After()
{
    ServiceOptions options;
    options.balloons = false;
    options.characters = { { "Merlin", { "", -2 } } };
    options.readingVoice = "fr";
    return options;
}

const SheetPlace kPlace{ "Output", QPoint(40, 50) };

} // namespace

// The user's choices are kept on a disk that fails at each step. What the user has just chosen holds until
// the end of the run whatever happens; the next run finds that, or what was kept before, never a mixture and
// never nothing.
class TestKeptOptions : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath("desktop/Tumblewick/Characters.conf");
        m_warnings.emplace("tumblewick.options");
    }
    void cleanup()
    {
        m_warnings.reset();
        m_folder.reset();
    }

    void whatCanBeBorneIsNotNoticed_data()
    {
        QTest::addColumn<DiskFault>("fault");
        QTest::newRow("slow") << DiskFault::Slow;
        QTest::newRow("short reads") << DiskFault::ShortReads;
        QTest::newRow("short writes") << DiskFault::ShortWrites;
        QTest::newRow("interrupted") << DiskFault::Interrupted;
    }
    void whatCanBeBorneIsNotNoticed()
    {
        QFETCH(DiskFault, fault);
        KeepFirst();
        const FaultyCalls calls(fault, 0, Inside());
        {
            SettingsStore store(m_path);
            OptionsKeeper keeper(store);
            QCOMPARE(keeper.Now(), Before());
            keeper.Set(After());
        }
        // Short files are mapped into memory instead of being read.
        QVERIFY(calls.Hits() > 0 || fault == DiskFault::ShortReads);
        QCOMPARE(NextRun()->ReadOptions(), After());
        QCOMPARE(NextRun()->ReadSheetPlace(), kPlace);
        QCOMPARE(m_warnings->lines, QStringList());
    }

    void whatWasKeptIsNotLost_data()
    {
        QTest::addColumn<DiskFault>("fault");
        QTest::newRow("no space") << DiskFault::NoSpace;
        QTest::newRow("no permission") << DiskFault::NoPermission;
        QTest::newRow("gone") << DiskFault::Gone;
    }
    void whatWasKeptIsNotLost()
    {
        QFETCH(DiskFault, fault);
        int lost = 0;
        int locked = 0;
        int steps = 0;
        for (;; ++steps) {
            cleanup();
            init();
            KeepFirst();
            const QByteArray step = "step " + QByteArray::number(steps + 1);
            QVERIFY2(steps < 500, step);
            SettingsStore store(m_path);
            OptionsKeeper keeper(store);
            QVERIFY2(keeper.Now() == Before(), step);
            int hits = 0;
            {
                const FaultyCalls calls(fault, steps, Inside());
                keeper.Set(After());
                hits = calls.Hits();
            }
            if (hits == 0)
                break;
            QVERIFY2(keeper.Now() == After(), step);
            const bool isKept = CheckNextRun(step);
            QVERIFY2(isKept || m_warnings->lines.size() == 1,
                     step + ": " + m_warnings->lines.join('|').toUtf8());
            lost += isKept ? 0 : 1;
            // On a sound disk the next choice is kept, and at once, even if a lock could not be taken away
            // any more.
            locked += QFile::exists(m_path + ".lock") ? 1 : 0;
            QElapsedTimer timer;
            timer.start();
            store.WriteOptions(After());
            QVERIFY2(timer.elapsed() < 5000, step);
            QVERIFY2(!QFile::exists(m_path + ".lock"), step);
            QVERIFY2(NextRun()->ReadOptions() == After(), step);
            QVERIFY2(Names().contains("Characters.conf"), step);
        }
        QVERIFY(steps > 0 && lost > 0 && (locked > 0 || fault == DiskFault::NoSpace));
        qInfo("%d steps failed, %d of them kept the new options from the next run", steps, lost);
    }

    // The first run on a disk that fails; there is no file yet.
    void aFirstChoiceIsKeptOrNot_data() { whatWasKeptIsNotLost_data(); }
    void aFirstChoiceIsKeptOrNot()
    {
        QFETCH(DiskFault, fault);
        for (int steps = 0;; ++steps) {
            cleanup();
            init();
            const QByteArray step = "step " + QByteArray::number(steps + 1);
            QVERIFY2(steps < 500, step);
            int hits = 0;
            {
                SettingsStore store(m_path);
                const FaultyCalls calls(fault, steps, Inside());
                OptionsKeeper keeper(store);
                keeper.Set(After());
                QVERIFY2(keeper.Now() == After(), step);
                hits = calls.Hits();
            }
            if (hits == 0)
                break;
            const ServiceOptions found = NextRun()->ReadOptions();
            QVERIFY2(found == After() || found == ServiceOptions(), step);
        }
    }

    // A run that cannot read what was kept goes by the defaults, says so, and does not write them over it.
    void whatCannotBeReadIsNotWrittenOver_data()
    {
        QTest::addColumn<DiskFault>("fault");
        QTest::newRow("no permission") << DiskFault::NoPermission;
        QTest::newRow("gone") << DiskFault::Gone;
    }
    void whatCannotBeReadIsNotWrittenOver()
    {
        QFETCH(DiskFault, fault);
        for (int steps = 0;; ++steps) {
            cleanup();
            init();
            KeepFirst();
            const QByteArray step = "step " + QByteArray::number(steps + 1);
            QVERIFY2(steps < 500, step);
            int hits = 0;
            {
                const FaultyCalls calls(fault, steps, Inside());
                SettingsStore store(m_path);
                OptionsKeeper keeper(store);
                QVERIFY2(keeper.Now() == Before() || keeper.Now() == ServiceOptions(), step);
                hits = calls.Hits();
            }
            if (hits == 0)
                break;
            QVERIFY2(NextRun()->ReadOptions() == Before(), step);
        }
    }

    void aFullDiskLeavesWhatWasKept()
    {
        KeepFirst();
        SettingsStore store(m_path);
        OptionsKeeper keeper(store);
        {
            const support::FullDisk disk(20);
            keeper.Set(After());
        }
        QCOMPARE(keeper.Now(), After());
        QCOMPARE(m_warnings->lines.size(), 1);
        QCOMPARE(NextRun()->ReadOptions(), Before());
        QCOMPARE(Names(), QStringList("Characters.conf"));
    }

    void anUnreadableStoreGivesDefaultsAndSaysSo()
    {
        KeepFirst();
        QCOMPARE(chmod(QFile::encodeName(m_folder->path()).constData(), 0755), 0);
        QCOMPARE(chmod(QFile::encodeName(m_path).constData(), 0), 0);
        {
            const support::AsOrdinaryUser user;
            SettingsStore store(m_path);
            QCOMPARE(store.ReadOptions(), ServiceOptions());
            store.ReadOptions();
        }
        QCOMPARE(m_warnings->lines.size(), 1);
        QCOMPARE(chmod(QFile::encodeName(m_path).constData(), 0644), 0);
        QCOMPARE(NextRun()->ReadOptions(), Before());
    }

    // Another program writes just now.
    void aLockThatIsHeldIsWaitedFor()
    {
        KeepFirst();
        SettingsStore store(m_path);
        QLockFile held(m_path + ".lock");
        QVERIFY(held.lock());
        std::thread other([&held] {
            QThread::msleep(300);
            held.unlock();
        });
        QElapsedTimer timer;
        timer.start();
        store.WriteOptions(After());
        const qint64 waited = timer.elapsed();
        other.join();
        QVERIFY2(waited >= 250, qPrintable(QString::number(waited)));
        QCOMPARE(NextRun()->ReadOptions(), After());
    }

    void aFolderInPlaceOfTheStoreStays()
    {
        QVERIFY(QDir().mkpath(m_path + "/something"));
        SettingsStore store(m_path);
        OptionsKeeper keeper(store);
        keeper.Set(After());
        QCOMPARE(keeper.Now(), After());
        QCOMPARE(m_warnings->lines.size(), 1);
        QVERIFY(QFileInfo(m_path + "/something").isDir());
    }

private:
    QByteArray Inside() const { return QFile::encodeName(m_folder->filePath("desktop")); }
    QStringList Names() const
    {
        return QDir(QFileInfo(m_path).path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    // By another run, see NextRun.
    void KeepFirst() const
    {
        const QString other = m_folder->filePath("first.conf");
        {
            SettingsStore store(other);
            store.WriteOptions(Before());
            store.WriteSheetPlace(kPlace);
        }
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()) && QFile::copy(other, m_path));
    }
    // What the next run finds. It has a copy of the file, since all who read one file in one program share
    // what they have in memory.
    std::unique_ptr<SettingsStore> NextRun() const
    {
        static int count = 0;
        const QString copy = m_folder->filePath(QStringLiteral("next%1.conf").arg(++count));
        QFile::copy(m_path, copy);
        return std::make_unique<SettingsStore>(copy);
    }
    // Whether the next run has the new options; else it has the old ones.
    bool CheckNextRun(const QByteArray &step) const
    {
        const auto next = NextRun();
        const ServiceOptions found = next->ReadOptions();
        if (found != After() && found != Before())
            QTest::qFail("neither old nor new options", __FILE__, __LINE__);
        if (next->ReadSheetPlace() != kPlace)
            QTest::qFail(step + ", the place of the sheet is lost", __FILE__, __LINE__);
        return found == After();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::optional<support::KeptLog> m_warnings;
};

QTEST_GUILESS_MAIN(TestKeptOptions)
#include "TestKeptOptions.moc"
