#include "platform/help/QtHelp.h"

#include "platform/files/Files.h"
#include "platform/help/HelpWindow.h"

namespace platform {

QtHelp::QtHelp(const Files &files) : m_files(files) {}

QtHelp::~QtHelp() = default;

void QtHelp::ShowTopic(const QString &file, const QString &topic)
{
    if (!m_window)
        m_window = std::make_unique<HelpWindow>();
    m_window->ShowTopic(m_files.Resolve(file), topic);
}

void QtHelp::CloseAll()
{
    if (m_window)
        m_window->close();
}

} // namespace platform
