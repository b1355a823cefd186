#pragma once

#include "Platform/Workspace.h"

#include <memory>

namespace quillon {

class MacWorkspace final : public Workspace {
  public:
    MacWorkspace();
    ~MacWorkspace() override;
    MacWorkspace(const MacWorkspace&) = delete;
    MacWorkspace& operator=(const MacWorkspace&) = delete;

    /// What is no address is not opened. The system settings have addresses, too.
    void open(std::string_view url) override;

    [[nodiscard]] DisplayOptions displayOptions() const override;
    void setDisplayOptionsHandler(std::function<void()> changed) override;

  private:
    class Observation;
    std::unique_ptr<Observation> observation_;
};

} // namespace quillon
