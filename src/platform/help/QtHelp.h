#pragma once

#include "platform/help/Help.h"

#include <QPointer>
#include <QWidget>

#include <vector>

namespace platform {

class Files;

// Help windows of our own. No compiled help can be read yet, so that each one tells what is missing.
class QtHelp : public Help {
public:
    // `files` has to outlive the object.
    explicit QtHelp(const Files &files);
    ~QtHelp() override;

    void ShowTopic(const QString &file, const QString &topic) override;
    void CloseAll() override;

private:
    const Files &m_files;
    std::vector<QPointer<QWidget>> m_windows;
};

} // namespace platform
