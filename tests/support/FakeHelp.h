#pragma once

#include "platform/help/Help.h"

#include <QStringList>

#include <vector>

namespace support {

// Help that opens no window and records what was asked of it.
class FakeHelp : public platform::Help {
public:
    void ShowTopic(const QString &file, const QString &topic) override;
    void CloseAll() override;

    struct Topic {
        QString file;
        QString topic;
    };
    // The topics that are open: those shown since the last CloseAll.
    const std::vector<Topic> &Open() const { return m_open; }
    // All calls in order, as "ShowTopic <file> <topic>" and "CloseAll".
    const QStringList &Calls() const { return m_calls; }

private:
    std::vector<Topic> m_open;
    QStringList m_calls;
};

} // namespace support
