# The Windows build (the mingw preset): the Qt-free part that runs beside the
# simulator. core, the simulator channel with its Win32 platform, the bridge
# orvanta-fsbridge.exe, and the test partner that plays FSUIPC under Wine.
# zlib, curl and Qt are not needed here.

# localtime_r and gmtime_r as on POSIX systems.
add_compile_definitions(_POSIX_THREAD_SAFE_FUNCTIONS WIN32_LEAN_AND_MEAN NOMINMAX)
# core without its file layer, which opens files by narrow path names that
# Windows' wide paths do not give; nothing on this side reads the program's
# files.
file(GLOB orv_core_srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/core/*.cpp)
list(FILTER orv_core_srcs EXCLUDE REGEX "/FileIo\\.cpp$")
add_library(orv_core STATIC ${orv_core_srcs})
target_include_directories(orv_core PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/src)

# The channel and what the bridge and the test partner use of the simulator
# link: the rest of src/simlink (tracking, drawing) needs the map and the plan
# and stays on the program's side.
set(orv_channel_files Fsuipc ImagePartner SimData SimImage Win32Platform NetSocket Bridge)
set(orv_channel_srcs)
foreach(f ${orv_channel_files})
  list(APPEND orv_channel_srcs ${CMAKE_CURRENT_SOURCE_DIR}/src/simlink/${f}.cpp)
endforeach()
add_library(orv_simlink_channel STATIC ${orv_channel_srcs})
target_include_directories(orv_simlink_channel PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/src)
target_link_libraries(orv_simlink_channel PUBLIC orv_core ws2_32)

file(GLOB fsbridge_srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/src/fsbridge/*.cpp)
add_executable(orvanta-fsbridge ${fsbridge_srcs})
target_link_libraries(orvanta-fsbridge PRIVATE orv_simlink_channel)

file(GLOB wine_partner_srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/wine/*.cpp)
if(wine_partner_srcs)
  add_executable(fsuipc-test-partner ${wine_partner_srcs})
  target_link_libraries(fsuipc-test-partner PRIVATE orv_simlink_channel)
endif()
