#pragma once

#include "platform/help/Help.h"

#include <memory>

namespace platform {

class Files;
class HelpWindow;

// Help in a window of our own, over the library that reads compiled help files.
//
// The window is made at the first call and only hidden by CloseAll, since that may come while one of its own
// dialogs is at work.
class QtHelp : public Help {
public:
    // `files` has to outlive the object.
    explicit QtHelp(const Files &files);
    ~QtHelp() override;

    void ShowTopic(const QString &file, const QString &topic) override;
    void CloseAll() override;

private:
    const Files &m_files;
    std::unique_ptr<HelpWindow> m_window;
};

} // namespace platform
