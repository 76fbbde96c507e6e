#pragma once

#include "support/AgentService.h"
#include "support/PuppetService.h"

#include <QTest>

// A client of the speaking-character service, over the fake figures or over the real ones: the two rows that
// every contract test runs with. The test forwards initTestCase_data, init and cleanup.
class ContractFixture : public QObject {
protected:
    using CharacterReference = platform::CharacterReference;
    using RequestReference = platform::RequestReference;

    static void ChooseServices()
    {
        QTest::addColumn<QString>("service");
        QTest::newRow("fake figures") << "fake";
        QTest::newRow("real figures") << "real";
    }
    void Begin()
    {
        QFETCH_GLOBAL(QString, service);
        if (service == "real")
            m_service = std::make_unique<support::PuppetAgentService>(QStringLiteral(CHARACTERS_FOLDER),
                                                                      QStringLiteral(SOUNDS_FOLDER));
        else
            m_service = std::make_unique<support::FakeAgentService>();
        m_control = m_service->Engine().CreateControl();
    }
    void End()
    {
        m_control = nullptr;
        m_service.reset();
    }

    CharacterReference Loaded(const QString &id = QStringLiteral("Merlin"))
    {
        m_control->Load(id, id + QStringLiteral(".acs"));
        return m_control->Character(id);
    }
    CharacterReference Visible(const QString &id = QStringLiteral("Merlin"))
    {
        const CharacterReference character = Loaded(id);
        character->Show(true);
        return character;
    }
    bool Ended(const RequestReference &request)
    {
        return m_service->Until([&] {
            return request->Status() != platform::kRequestQueued &&
                   request->Status() != platform::kRequestRunning;
        });
    }
    void Pass(int milliseconds) { m_service->Pass(std::chrono::milliseconds(milliseconds)); }
    static qint32 Raised(const std::function<void()> &call)
    {
        try {
            call();
        } catch (const platform::Error &error) {
            return error.Number();
        }
        return 0;
    }

    std::unique_ptr<support::AgentService> m_service;
    platform::AgentControlReference m_control;
};

// How a request stands, for tests of the contract.
#define COMPARE_STATUS(request, status, number)                                                              \
    do {                                                                                                     \
        const platform::RequestReference compared = (request);                                               \
        QCOMPARE(int(compared->Status()), int(status));                                                      \
        QCOMPARE(compared->Number(), qint32(number));                                                        \
    } while (false)
