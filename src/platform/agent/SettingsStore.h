#pragma once

#include "platform/agent/ServiceOptions.h"

#include <QSettings>

namespace platform {

// Keeps the options where the desktop keeps a user's settings, in a file of the service's own.
class SettingsStore final : public OptionsStore {
public:
    SettingsStore();
    // In that file instead.
    explicit SettingsStore(const QString &fileName);

    ServiceOptions ReadOptions() override;
    void WriteOptions(const ServiceOptions &options) override;
    SheetPlace ReadSheetPlace() override;
    void WriteSheetPlace(const SheetPlace &place) override;

private:
    bool Bool(const QString &key, bool usual);
    int Number(const QString &key, int usual);
    QString Text(const QString &key);
    void Sync();
    void Written();
    void Complain(const QString &what);

    QSettings m_settings;
    bool m_hasComplained = false;
};

} // namespace platform
