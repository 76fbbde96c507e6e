#pragma once

#include <QString>

#include <vector>

namespace platform {

// A volume that the user can reach, told by the folder in which its files appear.
struct Drive {
    enum class Kind { Home, Removable, Network, Fixed };

    QString path; // real, without a separator at the end, except for the root
    QString name; // for people
    Kind kind = Kind::Fixed;
};

// The volumes of the computer. There are no drive letters: the user's home stands first among the drives and
// takes the place of the drive that everything starts on.
class Drives {
public:
    virtual ~Drives() = default;

    // The drives that are there now: the home, removable media, shares of a network, other volumes, and last
    // the whole computer. Never raises; the home is told even when it has gone.
    virtual std::vector<Drive> All() const = 0;

    // Raises 68 when `path` is a drive that All has told of, now or before, and that cannot be read any more:
    // unmounted, pulled out or broken. Any other path is let pass, whether it is there or not.
    virtual void CheckReady(const QString &path) const = 0;

    // The home.
    QString Starting() const { return All().front().path; }
};

} // namespace platform
