#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace quillon {

/// Another program, which lives as long as this object.
class XProgram {
  public:
    explicit XProgram(std::vector<std::string> words);
    XProgram(const XProgram&) = delete;
    XProgram& operator=(const XProgram&) = delete;
    ~XProgram();

  private:
    pid_t process_ = -1;
};

} // namespace quillon
