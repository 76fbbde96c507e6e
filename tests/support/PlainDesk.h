#pragma once

#include "platform/Services.h"
#include "platform/agent/Agent.h"
#include "platform/files/Files.h"
#include "platform/forms/Screen.h"
#include "support/FakeBoxes.h"
#include "support/FakeChance.h"
#include "support/FakeDesktop.h"
#include "support/FakeDisplay.h"
#include "support/FakeDrives.h"
#include "support/FakeHelp.h"
#include "support/FakeMedia.h"
#include "support/FakeProcess.h"
#include "support/FakeTime.h"

namespace support {

// The fakes that screens and boxes stand on, installed for one test; no agent and, unless given, no files.
// Forgets all screens when it goes.
struct PlainDesk {
    // `realFiles` null: no file can be reached.
    explicit PlainDesk(platform::Files *realFiles = nullptr) : files(realFiles)
    {
        platform::InstallServices(&services);
    }
    ~PlainDesk()
    {
        platform::ForgetScreens();
        platform::InstallServices(nullptr);
    }
    PlainDesk(const PlainDesk &) = delete;
    PlainDesk &operator=(const PlainDesk &) = delete;

    // Lets everything happen that is due now.
    void Settle() { time.Run(std::chrono::milliseconds(0)); }

    class NoFiles : public platform::Files {
    public:
        bool FileExists(const QString &) const override { return false; }
        bool FolderExists(const QString &) const override { return false; }
        QString Resolve(const QString &path) const override { return path; }
        QStringList FileNames(const QString &) const override
        {
            throw platform::Error(platform::kPathNotFound);
        }
        QStringList FolderNames(const QString &) const override
        {
            throw platform::Error(platform::kPathNotFound);
        }
        std::unique_ptr<platform::TextReader> OpenForReading(const QString &) override
        {
            throw platform::Error(platform::kPathNotFound);
        }
        std::unique_ptr<platform::TextWriter> OpenForWriting(const QString &, platform::FileWriting,
                                                             bool) override
        {
            throw platform::Error(platform::kPathNotFound);
        }
        void Kill(const QString &) override { throw platform::Error(platform::kPathNotFound); }
        void FileCopy(const QString &, const QString &) override
        {
            throw platform::Error(platform::kPathNotFound);
        }
    };
    class NoAgent : public platform::AgentServer {
    public:
        platform::AgentControlReference CreateControl() override { return {}; }
    };

    platform::Files *files;
    NoFiles noFiles;
    NoAgent agent;
    FakeTime time;
    FakeProcess process{ time };
    FakeBoxes boxes;
    FakeChance chance;
    FakeHelp help;
    FakeDisplay display;
    FakeDesktop desktop;
    FakeDrives drives;
    FakeMedia media{ time };
    platform::Services services{
        time,  time,  chance, process, files ? *files : static_cast<platform::Files &>(noFiles),
        boxes, help,  agent,  display, desktop,
        media, drives
    };
};

} // namespace support
