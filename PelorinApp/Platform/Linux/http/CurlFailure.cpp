#include "Platform/Linux/http/CurlFailure.h"

#include <cerrno>

namespace quillon {

std::string failureReason(CURLcode code, long systemError) {
    switch (code) {
    case CURLE_URL_MALFORMAT:
        return "the address is not valid";
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return "the server was not found; is this computer online?";
    case CURLE_COULDNT_CONNECT:
        return systemError == ENETUNREACH || systemError == ENETDOWN
                   ? "the network cannot be reached"
                   : "the server does not answer";
    case CURLE_OPERATION_TIMEDOUT:
        return tooSlowAnswer;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ISSUER_ERROR:
        return "the connection to the server is not secure";
    case CURLE_SSL_CACERT_BADFILE:
        return "this computer has no list of the certificates to trust";
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return "the server broke the connection off";
    case CURLE_FILESIZE_EXCEEDED:
    case CURLE_OUT_OF_MEMORY: // which is also said of a header line that is too long
        return tooLargeAnswer;
    case CURLE_UNSUPPORTED_PROTOCOL: // an answer that does not begin as HTTP
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
    case CURLE_HTTP2:
        return senselessAnswer;
    default:
        return "the connection to the server failed";
    }
}

} // namespace quillon
