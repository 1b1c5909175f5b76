# One set of warnings for all of the project's own code; a warning is an error.
add_library(vm_warnings INTERFACE)
target_compile_options(vm_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor> $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
  -Wcast-qual -Wformat=2 -Wundef -Wvla
  $<$<COMPILE_LANGUAGE:CXX>:-Wsuggest-override>
  -Werror)
target_compile_definitions(vm_warnings INTERFACE
  QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS)
