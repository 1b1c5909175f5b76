# VM_SANITIZE turns on the address and undefined-behaviour checkers for everything that is built.
option(VM_SANITIZE "Build with the address and undefined-behaviour checkers" OFF)
if(VM_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
