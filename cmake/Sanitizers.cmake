# VM_SANITIZE names the checkers that everything is built with, as the compilers name them: "address,undefined" or
# "thread". VM_COVERAGE counts which lines run.
set(VM_SANITIZE "" CACHE STRING "Checkers to build with, as in -fsanitize=")
if(VM_SANITIZE)
  add_compile_options(-fsanitize=${VM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VM_SANITIZE})
endif()
option(VM_COVERAGE "Count which lines run" OFF)
if(VM_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
