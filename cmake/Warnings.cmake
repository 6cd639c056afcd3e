# One warnings target for all of our own code.
add_library(qlt_warnings INTERFACE)
target_compile_options(qlt_warnings INTERFACE -Wall -Wextra -Wpedantic -Wno-missing-field-initializers)
if(QLT_WERROR)
  target_compile_options(qlt_warnings INTERFACE -Werror)
endif()
