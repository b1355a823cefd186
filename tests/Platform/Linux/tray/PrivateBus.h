#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace quillon {

/// A message bus that lives as long as this object; the environment names it meanwhile.
class PrivateBus {
  public:
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    [[nodiscard]] const QString& address() const { return address_; }

    /// It answers nobody any more, or does again.
    void stop() const;
    void resume() const;

    /// It ends, and with it all connections; a new one begins at the same place.
    void end();
    void begin();

  private:
    QTemporaryDir folder_; // of its own: programs watch it

    QProcess daemon_;
    QString address_;
};

} // namespace quillon
