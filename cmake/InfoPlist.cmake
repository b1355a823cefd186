# Appends to `entries` a text of an Info.plist; nothing when there is no such text, since the system
# and the update framework take an empty one for a value.
function(quillon_plist_entry entries key text)
  if(text STREQUAL "")
    return()
  endif()
  string(REPLACE "&" "&amp;" text "${text}")
  string(REPLACE "<" "&lt;" text "${text}")
  string(REPLACE ">" "&gt;" text "${text}")
  set(${entries} "${${entries}}  <key>${key}</key>\n  <string>${text}</string>\n" PARENT_SCOPE)
endfunction()
