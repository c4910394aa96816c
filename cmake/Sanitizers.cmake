# ZUK_SANITIZE: a list for -fsanitize (address;undefined or thread), empty for none.
set(ZUK_SANITIZE "" CACHE STRING "sanitizers to build everything with, for example address;undefined")
if(ZUK_SANITIZE)
    list(JOIN ZUK_SANITIZE "," ZUK_SANITIZE_FLAG)
    add_compile_options(-fsanitize=${ZUK_SANITIZE_FLAG} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZUK_SANITIZE_FLAG})
endif()
