# Settings of all targets (warnings, size), and the function that declares a library.

add_library(quillon_options INTERFACE)
target_include_directories(quillon_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(
  quillon_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Werror)
if(WIN32)
  # The program uses the A functions of Windows 7 and later. Sections are split so that the linker drops what is unused.
  target_compile_definitions(quillon_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX STRICT _WIN32_WINNT=0x0601
                                                       _WIN32_IE=0x0700)
  target_compile_options(quillon_options INTERFACE -ffunction-sections -fdata-sections)
  # Reproducible builds, independent of time and folder.
  target_link_options(quillon_options INTERFACE -static -Wl,--gc-sections -Wl,--no-insert-timestamp)
endif()
if(QUILLON_SANITIZE)
  target_compile_options(quillon_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(quillon_options INTERFACE -fsanitize=address,undefined)
endif()
if(QUILLON_FUZZ)
  target_compile_options(quillon_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# quillon_library(NAME PORTABLE file... WINDOWS file... NATIVE file... LINK target...)
# PORTABLE sources do not use Windows. WINDOWS sources are the windows and the Windows implementations of headers, NATIVE
# sources the native ones.
function(quillon_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "PORTABLE;WINDOWS;NATIVE;LINK")
  if(WIN32)
    set(sources ${arg_PORTABLE} ${arg_WINDOWS})
  else()
    set(sources ${arg_PORTABLE} ${arg_NATIVE})
  endif()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC quillon_options ${arg_LINK})
    if(WIN32)
      target_compile_options(${name} PRIVATE -fstack-protector-strong)  # with core/stack_guard_win32.cpp
    endif()
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE quillon_options ${arg_LINK})
  endif()
endfunction()

# quillon_delayed_import(DLL): the target DLL_delayed links the functions of cmake/DLL.def so that the system loads DLL
# when the first of them is called.
function(quillon_delayed_import dll)
  set(definition ${CMAKE_BINARY_DIR}/${dll}.def)
  set(library ${CMAKE_BINARY_DIR}/lib${dll}_delayed.a)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/${dll}.def)
  file(READ ${CMAKE_SOURCE_DIR}/cmake/${dll}.def exports)
  set(prefix _)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)  # only 32-bit symbols have a prefix, and tell the size of the arguments
    string(REGEX REPLACE "@[0-9]+" "" exports "${exports}")
    set(prefix "")
  endif()
  file(CONFIGURE OUTPUT ${definition} CONTENT "${exports}" @ONLY)
  add_custom_command(
    OUTPUT ${library}
    COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${definition} --output-delaylib ${library}
    DEPENDS ${definition}
    VERBATIM)
  add_custom_target(${dll}_delayed_library DEPENDS ${library})
  add_library(${dll}_delayed INTERFACE)
  add_dependencies(${dll}_delayed ${dll}_delayed_library)
  target_link_libraries(${dll}_delayed INTERFACE ${library} delayimp)
  # Keep the code that loads the DLL, which is reached through a pointer only.
  string(REGEX MATCHALL "\n[A-Za-z_]+[@0-9]*" symbols "${exports}")
  list(FILTER symbols EXCLUDE REGEX "LIBRARY|EXPORTS")
  list(TRANSFORM symbols REPLACE "\n" "LINKER:--undefined=${prefix}")
  target_link_options(${dll}_delayed INTERFACE ${symbols})
endfunction()
