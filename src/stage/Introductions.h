#pragma once

namespace tumblewick {

class frmMenu1;

// The two comedies that the characters play over the menu at the start of a run. Each runs to its end, with
// handlers of every kind inside its waits. Leaving the menu does not end one: it then waits no more where it
// may be skipped, and the stop that comes up clears what it goes on to ask for. An error ends it silently.
void IntroOneScript(frmMenu1 &menu);
void IntroTwoScript(frmMenu1 &menu);

} // namespace tumblewick
