#include "Platform/Linux/updates/HttpFailure.h"

namespace quillon {

std::string failureReason(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return "the server does not answer";
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ProxyNotFoundError:
        return "the server was not found; is this computer online?";
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return "the server takes too long to answer";
    case QNetworkReply::SslHandshakeFailedError:
        return "the connection to the server is not secure";
    case QNetworkReply::RemoteHostClosedError:
        return "the server broke the connection off";
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::ProtocolUnknownError:
        return "the server's answer makes no sense";
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return "the network cannot be reached";
    default:
        return "the connection to the server failed";
    }
}

} // namespace quillon
