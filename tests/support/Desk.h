#pragma once

#include "platform/Services.h"
#include "platform/agent/AgentEngine.h"
#include "platform/files/DiskFiles.h"
#include "platform/forms/Screen.h"
#include "support/FakeBoxes.h"
#include "support/FakeChance.h"
#include "support/FakeDesktop.h"
#include "support/FakeDisplay.h"
#include "support/FakeDrives.h"
#include "support/FakeHelp.h"
#include "support/FakeMedia.h"
#include "support/FakeProcess.h"
#include "support/FakeSheet.h"
#include "support/FakeStage.h"
#include "support/FakeTime.h"
#include "support/FaultyDisk.h"
#include "support/FaultyFiles.h"
#include "support/Transcript.h"

#include <QTemporaryDir>
#include <QWidget>

class QAbstractButton;

namespace support {

// The whole game on fakes, for one test: a fresh shared state, an application folder of its own with empty
// folders for lists and introductions switched off, and time that stands still until somebody waits.
class Desk {
public:
    Desk();
    ~Desk();
    Desk(const Desk &) = delete;
    Desk &operator=(const Desk &) = delete;

    // Writes a list into `Lists` or `QList`, a line each.
    void WriteSpelling(const QString &name, const QStringList &lines);
    void WriteQuiz(const QString &name, const QStringList &lines);
    void WriteFile(const QString &path, const QByteArray &content); // path below the application folder
    // What a file holds, "no such file" when it cannot be read; likewise.
    QByteArray Content(const QString &path) const;
    // The names of the files in a folder; likewise.
    QStringList OnDisk(const QString &path) const;

    // Sets the shared state as the set-up screens do, then shows the game screen and plays its opening.
    void BeginSpelling(const QStringList &players, const QStringList &lines);
    void BeginQuiz(const QStringList &players, const QStringList &lines);

    // Lets everything happen that is due now.
    void Settle() { time.Run(std::chrono::milliseconds(0)); }
    // Calls `work` that much later, while somebody waits.
    void After(std::chrono::milliseconds delay, std::function<void()> work);
    // Lets time pass until nothing is left to come.
    void Rest() { time.RunUntilIdle(); }

    // A control of the screen that is in front, by its name. Fails the test and gives null when there is
    // none.
    template <class Control>
    Control *Find(const QString &name)
    {
        return qobject_cast<Control *>(FindWidget(name));
    }
    // Presses a button as a player would: it has to be there, seen and enabled. What the handler waits for
    // happens inside.
    void Press(const QString &button);
    // Types into a text box, after emptying it.
    void Type(const QString &box, const QString &text);
    // The name of the control of the screen in front that has the focus.
    QString Focus();
    // `enabled`, `disabled` or `hidden` for each button named, such as "cmdGo enabled, cmdPass hidden".
    QString States(const QStringList &buttons);

    QTemporaryDir folder;
    FaultyDisk system;
    platform::DiskFiles disk{ system };
    FaultyFiles files{ disk };
    FakeTime time;
    FakeProcess process{ time };
    FakeBoxes boxes;
    FakeChance chance;
    FakeHelp help;
    FakeStage stage{ time };
    FakeSheet sheet;
    platform::AgentEngine agent{ time, stage, sheet };
    FakeDisplay display;
    FakeDesktop desktop;
    FakeDrives drives;
    FakeMedia media{ time };
    platform::Services services{ time, time,  chance,  process, files, boxes,
                                 help, agent, display, desktop, media, drives };
    Transcript transcript;

private:
    QWidget *FindWidget(const QString &name);
    void BeginGame(const QString &mode, const QString &listFolder, const QStringList &players);
    void WriteLines(const QString &listFolder, const QString &name, const QStringList &lines);

    std::vector<std::unique_ptr<platform::PendingCall>> m_later;
};

} // namespace support
