# Reads every #include of src against one table of the rooms. A room may include from itself and from the lines
# above its own; rooms on one line do not know each other. Fails with file, line and the rule.
# Run as: cmake -DSOURCE=src -P layers.cmake
# The rooms of the families are those beside what all share.
file(GLOB families RELATIVE "${SOURCE}" "${SOURCE}/devices/*/*.cpp")
list(TRANSFORM families REPLACE "/[^/]*$" "")
list(REMOVE_DUPLICATES families)
list(REMOVE_ITEM families "devices/shared" "devices/lint")
list(JOIN families " " families)

set(table
  "base"
  "formats/data"
  "formats/crc"
  "link/wire"
  "link/lists"
  "settings"
  "core/model"
  "core/files"
  "misc"
  "devices/shared"
  "${families}"
  "devices/lint"
  "devices"
  "exec"
  "app"
  "forms/edits"
  "forms"
  "forms/generated"
  "forms/chip forms/prog forms/tools"
  "forms/TFormFactory"
  "ui"
  "ui/dialogs"
  "ui/panels ui/setup"
  "ui/main"
  "console")

set(rank 0)
foreach(line IN LISTS table)
  math(EXPR rank "${rank} + 1")
  string(REPLACE " " ";" rooms "${line}")
  foreach(room IN LISTS rooms)
    set("rank_${room}" ${rank})
  endforeach()
endforeach()

# The room of a path: the longest entry of the table that it begins with.
function(find_room path out)
  string(REGEX REPLACE "\\.[a-z]+$" "" room "${path}")
  while(room AND NOT DEFINED "rank_${room}")
    if(NOT room MATCHES "/")
      set(room "")
    endif()
    string(REGEX REPLACE "/[^/]*$" "" room "${room}")
  endwhile()
  set(${out} "${room}" PARENT_SCOPE)
endfunction()

set(faults 0)
file(GLOB_RECURSE files RELATIVE "${SOURCE}" "${SOURCE}/*.cpp" "${SOURCE}/*.h" "${SOURCE}/*.def")
foreach(file IN LISTS files)
  find_room("${file}" from)
  file(READ "${SOURCE}/${file}" text)
  string(REGEX MATCHALL "#include \"[^\"]+\"" includes "${text}")
  foreach(include IN LISTS includes)
    string(REGEX REPLACE "^#include \"(.*)\"$" "\\1" target "${include}")
    find_room("${target}" to)
    if(from AND to AND (from STREQUAL to OR rank_${to} LESS rank_${from}))
      continue()
    endif()
    string(FIND "${text}" "${include}" at)
    string(SUBSTRING "${text}" 0 ${at} before)
    string(REGEX MATCHALL "\n" breaks "${before}")
    list(LENGTH breaks number)
    math(EXPR number "${number} + 1")
    message("${file}:${number}: '${from}' may not include \"${target}\" of '${to}'")
    math(EXPR faults "${faults} + 1")
  endforeach()
endforeach()
list(LENGTH files count)
if(faults OR count LESS 100)
  message(FATAL_ERROR "${faults} includes against the order of the rooms, in ${count} files")
endif()
message(STATUS "${count} files keep the order of the rooms")
