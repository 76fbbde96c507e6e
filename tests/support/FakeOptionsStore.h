#pragma once

#include "platform/agent/ServiceOptions.h"

namespace support {

// Options in memory, so that no test depends on what its user has chosen.
class FakeOptionsStore : public platform::OptionsStore {
public:
    platform::ServiceOptions ReadOptions() override { return options; }
    void WriteOptions(const platform::ServiceOptions &written) override
    {
        options = written;
        ++writes;
    }
    platform::SheetPlace ReadSheetPlace() override { return place; }
    void WriteSheetPlace(const platform::SheetPlace &written) override { place = written; }

    platform::ServiceOptions options;
    platform::SheetPlace place;
    int writes = 0;
};

} // namespace support
