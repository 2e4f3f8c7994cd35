#include "text/state.h"

namespace zel {

TextState textState;

}  // namespace zel
