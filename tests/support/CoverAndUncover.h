#pragma once

#include "shell/frmAbout.h"
#include "support/Desk.h"

namespace support {

// Another screen of the program comes to the front and goes again, so that the one below becomes active once
// more.
inline void CoverAndUncover(Desk &desk)
{
    tumblewick::frmAbout::Shared().Show();
    desk.Settle();
    tumblewick::frmAbout::Shared().Unload();
    desk.Settle();
}

} // namespace support
