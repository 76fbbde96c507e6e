#include "platform/system/QtDesktop.h"

#include "platform/Error.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace platform {

namespace {

const char *const kInformationTools[] = {
    "hardinfo",
    "hardinfo2",
    "kinfocenter",
    "gnome-system-monitor",
    "mate-system-monitor",
    "plasma-systemmonitor",
    "xfce4-taskmanager",
    "lxtask",
    "lxqt-about",
    "xfce4-about",
    "mate-about",
};

const char *const kBrowserStarters[] = { "xdg-open", "sensible-browser", "x-www-browser" };

template <std::size_t Count>
QString FirstInstalled(const char *const (&names)[Count])
{
    for (const char *name : names) {
        const QString path = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (!path.isEmpty())
            return path;
    }
    return {};
}

// The browser that the user has chosen, by way of the desktop's own starter.
class DesktopBrowser : public Browser {
public:
    explicit DesktopBrowser(QString starter) : m_starter(std::move(starter)) {}

    void SetVisible(bool) override {} // it shows itself with its first page
    void Navigate(const QString &address) override
    {
        if (!QProcess::startDetached(m_starter, { address }))
            throw Error(kNoSuchComponent);
    }

private:
    const QString m_starter;
};

} // namespace

std::optional<RegistryValue> QtDesktop::LookUp(const QString &key, const QString &name) const
{
    if (key.compare(QLatin1String("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"), Qt::CaseInsensitive) != 0 ||
        name.compare(QLatin1String("PATH"), Qt::CaseInsensitive) != 0)
        return std::nullopt;
    const QString tool = FirstInstalled(kInformationTools);
    if (tool.isEmpty())
        return std::nullopt;
    return RegistryValue{ RegistryValue::kText, QFile::encodeName(tool) + '\0' };
}

void QtDesktop::Start(const QString &program)
{
    if (!QFileInfo::exists(program))
        throw Error(kFileNotFound);
    if (!QProcess::startDetached(program, {}))
        throw Error(kInvalidCall);
}

std::unique_ptr<Browser> QtDesktop::NewBrowser()
{
    const QString starter = FirstInstalled(kBrowserStarters);
    if (starter.isEmpty())
        throw Error(kNoSuchComponent);
    return std::make_unique<DesktopBrowser>(starter);
}

} // namespace platform
