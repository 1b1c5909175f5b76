# One set of warnings for all of the project's own code. VM_WERROR makes each an error: the presets set it, so that
# whoever packages the program with a newer compiler is not stopped by a new warning.
option(VM_WERROR "A warning is an error" OFF)
add_library(vm_warnings INTERFACE)
target_compile_options(vm_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor> $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
  -Wcast-qual -Wformat=2 -Wundef -Wvla
  $<$<COMPILE_LANGUAGE:CXX>:-Wsuggest-override>
  $<$<BOOL:${VM_WERROR}>:-Werror>)
target_compile_definitions(vm_warnings INTERFACE
  QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS)
