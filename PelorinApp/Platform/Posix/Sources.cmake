# What all systems of this family share: each platform compiles it in.
set(quillon_posix_sources
  LoadedLibrary.cpp
  StandardError.cpp
  StandardOutput.cpp
  files/AtomicFile.cpp
  files/FileErrors.cpp
  files/FolderCalls.cpp
  files/OpenFolder.cpp
  files/PosixFileManager.cpp
  files/TreeRemoval.cpp)
list(TRANSFORM quillon_posix_sources PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
