#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace platform {

// What the desktop's register of installed things holds under a name.
struct RegistryValue {
    enum Type { kText = 1, kNumber = 4 }; // others there may be
    int type = kText;
    QByteArray data; // text in the code page, often with a zero at its end; a number lowest byte first
};

// A browser of the user's, started by the program.
class Browser {
public:
    virtual ~Browser() = default;
    virtual void SetVisible(bool visible) = 0;
    // Raises 429 when the browser does not come up.
    virtual void Navigate(const QString &address) = 0;
};

// The desktop around the program.
class Desktop {
public:
    virtual ~Desktop() = default;

    // The value `name` of `key` for the whole machine; none when either is missing.
    virtual std::optional<RegistryValue> LookUp(const QString &key, const QString &name) const = 0;
    // Starts a program in a window of its own and does not wait for it. Raises 53 when there is no such
    // program, 5 when it does not start.
    virtual void Start(const QString &program) = 0;
    // Raises 429 when there is no browser.
    virtual std::unique_ptr<Browser> NewBrowser() = 0;
};

} // namespace platform
