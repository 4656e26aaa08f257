# Compile options of every target of the project.
add_library(veldan_options INTERFACE)
target_compile_options(veldan_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wformat=2
  -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Unique symbols would keep a library in memory after dlclose.
  target_compile_options(veldan_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-gnu-unique>)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # A header of xcb has a field that is named like a keyword; the file that includes it renames the field by a macro.
  target_compile_options(veldan_options INTERFACE -Wno-keyword-macro)
endif()
# Link options of the shared libraries: no undefined symbols, no unused dependencies. Clang links the sanitizers'
# functions into the program only, so its libraries always have undefined symbols.
set(VELDAN_LINK_OPTIONS -Wl,--as-needed)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  list(APPEND VELDAN_LINK_OPTIONS -Wl,-z,defs)
endif()
if(VELDAN_SANITIZE)
  target_compile_options(veldan_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(veldan_options INTERFACE -fsanitize=address,undefined)
endif()
target_include_directories(veldan_options INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
