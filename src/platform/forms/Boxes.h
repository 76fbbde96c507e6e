#pragma once

#include <QString>

#include <functional>

namespace platform {

enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Yes, No, Cancel };

// The title of a box that has none.
inline const QString kNoTitle = QStringLiteral("");

// Modal boxes. Events run inside: timers tick, characters go on, handlers of other windows of the program do
// not. The text is always plain, never markup. No error is raised.
class Boxes {
public:
    virtual ~Boxes() = default;

    // `title` null means the application's title, kNoTitle none. Closing the box from its frame answers
    // Cancel, or No where there is no Cancel, or Ok where there is neither.
    virtual BoxAnswer MessageBox(const QString &text, BoxButtons buttons = BoxButtons::Ok,
                                 const QString &title = QString()) = 0;

    // Asks for a line of text, under the application's title. What was typed, empty when cancelled.
    virtual QString InputBox(const QString &prompt) = 0;

    // Runs `work` beside the program's one thread and comes back when it is done; events run inside as with
    // a box from the start. When it takes its time, a busy pointer and a box with this text and no buttons
    // show that. `work` may use the files, nothing else. Raises what it raises.
    virtual void WhileBusy(const QString &text, const std::function<void()> &work) = 0;
};

} // namespace platform
