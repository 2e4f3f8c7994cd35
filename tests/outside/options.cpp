// The toolkit brings its language along, and none of the options that it is built with itself.
#include <typeinfo>

#include "toolkit/core/dialog.h"

static_assert(__cplusplus >= 202002L);
#ifdef _FORTIFY_SOURCE
#error "somebody else's option"
#endif

const std::type_info& TypeOf(const zel::Dialog* dialog) {
  int unused;  // -Wall -Werror would end it here
  return dialog ? typeid(*dialog) : throw 0;
}
