#pragma once

#include <QNetworkReply>

#include <string>

namespace quillon {

/// Why an exchange with a server that sent no usable status has failed, in plain words.
[[nodiscard]] std::string failureReason(QNetworkReply::NetworkError error);

} // namespace quillon
