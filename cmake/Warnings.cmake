# Warnings are errors for everything we write; imported targets are SYSTEM and stay quiet.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wconversion> -Werror)
