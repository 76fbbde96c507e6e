#include "shell/SharedState.h"

namespace tumblewick {

SharedState &State()
{
    static SharedState state;
    return state;
}

} // namespace tumblewick
