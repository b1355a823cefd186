#include "Platform/Linux/http/UrlExchange.h"

#include "Platform/Linux/http/CurlFailure.h"
#include "Platform/Linux/http/ThisComputer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

#include <sys/socket.h>

namespace quillon {

namespace {

constexpr double longestConnect = 10; // seconds
constexpr double leastSpeed = 100;    // bytes per second; a server that sends fewer is given up
constexpr std::size_t largestHead = 0x40000; // bytes of all headers, redirects' included
constexpr long firstFinalStatus = 200;

struct UrlDeleter {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
using Url = std::unique_ptr<CURLU, UrlDeleter>;

std::string partOf(const Url& url, CURLUPart part) {
    char* text = nullptr;
    if (curl_url_get(url.get(), part, &text, 0) != CURLUE_OK) {
        return {};
    }
    std::string copy(text);
    curl_free(text);
    return copy;
}

/// An address, if need be relative to another, or null if it makes none.
Url urlOf(const std::string& address, const std::string& base = {}) {
    Url url(curl_url());
    if (url != nullptr && !base.empty()) {
        curl_url_set(url.get(), CURLUPART_URL, base.c_str(), 0);
    }
    // With what may not stand in an address, such as spaces, put so that it may: as browsers do.
    if (url == nullptr || curl_url_set(url.get(), CURLUPART_URL, address.c_str(),
                                       CURLU_URLENCODE | CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK) {
        return nullptr;
    }
    return url;
}

/// The scheme that is written before an address, if any. Asked of what may be none that the library
/// can read.
std::string_view writtenScheme(std::string_view address) {
    const auto end = address.find_first_of(":/?#");
    return end != std::string_view::npos && address[end] == ':' ? address.substr(0, end) : "";
}

bool isHttp(const std::string& scheme) { return scheme == "http" || scheme == "https"; }

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool sameName(std::string_view name, std::string_view lowerCase) {
    return std::equal(name.begin(), name.end(), lowerCase.begin(), lowerCase.end(),
                      [](char a, char b) { return lower(a) == b; });
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos
               ? std::string_view{}
               : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

/// Whether a list of encodings holds but those that unpack within little memory. The library would
/// unpack others, too, whether they were asked for or not.
bool unpacksWithinLittle(std::string_view encodings) {
    constexpr std::array cheap{"gzip", "x-gzip", "deflate", "identity", "chunked", ""};
    while (!encodings.empty()) {
        const auto comma = encodings.find(',');
        const auto one = trimmed(encodings.substr(0, comma));
        if (std::none_of(cheap.begin(), cheap.end(),
                         [&](const char* name) { return sameName(one, name); })) {
            return false;
        }
        encodings = comma == std::string_view::npos ? "" : encodings.substr(comma + 1);
    }
    return true;
}

/// Programs that are started meanwhile must not inherit the connection.
curl_socket_t openSocket(void* /*unused*/, curlsocktype /*purpose*/, curl_sockaddr* address) {
    return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

double patienceOf(const UrlRequest& request) {
    return std::isfinite(request.patience) && request.patience > 0 ? request.patience
                                                                   : UrlRequest{}.patience;
}

UrlExchange::Clock::duration wait(std::chrono::duration<double> seconds) {
    return std::chrono::duration_cast<UrlExchange::Clock::duration>(seconds);
}

} // namespace

UrlExchange::UrlExchange(UrlRequest request, const UrlSettings& settings)
    : request_(std::move(request)), settings_(settings),
      patience_(std::min(patienceOf(request_), settings.longestExchange)), easy_(curl_easy_init()),
      headers_(curl_slist_append(nullptr, "Cache-Control: no-cache"), curl_slist_free_all) {}

std::optional<UrlError> UrlExchange::prepare() {
    if (easy_ == nullptr) {
        return UrlError{failureReason(CURLE_FAILED_INIT, 0)};
    }
    const Url url = urlOf(request_.url);
    if (url == nullptr) {
        return UrlError{failureReason(CURLE_URL_MALFORMAT, 0)};
    }
    if (!isHttp(partOf(url, CURLUPART_SCHEME))) {
        return UrlError{"the address is not one of the web"};
    }
    url_ = partOf(url, CURLUPART_URL);
    setOptions();
    prepareTransfer();
    return std::nullopt;
}

void UrlExchange::setOptions() {
    CURL* const easy = easy_.get();
    curl_easy_setopt(easy, CURLOPT_PRIVATE, this);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A thread that waits for a name server is left to itself, not waited for.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_OPENSOCKETFUNCTION, openSocket);
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    // The newer ones gain nothing for single files, and have more to go wrong.
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy, CURLOPT_USERAGENT, settings_.userAgent.c_str());
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers_.get());
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "gzip");
    curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, headerArrived);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, bodyArrived);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(easy, CURLOPT_MAXFILESIZE_LARGE,
                     static_cast<curl_off_t>(std::min<std::size_t>(
                         request_.largestBody, std::numeric_limits<curl_off_t>::max())));
    const double connect = std::min(longestConnect, patience_.count());
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, std::lround(std::ceil(connect * 1000)));
    if (!settings_.certificates.empty()) {
        curl_blob blob{};
        blob.data = const_cast<char*>(settings_.certificates.data());
        blob.len = settings_.certificates.size();
        blob.flags = CURL_BLOB_COPY;
        curl_easy_setopt(easy, CURLOPT_CAINFO_BLOB, &blob);
    }
}

void UrlExchange::prepareTransfer() {
    const bool local = isThisComputer(partOf(urlOf(url_), CURLUPART_HOST));
    curl_easy_setopt(easy_.get(), CURLOPT_URL, url_.c_str());
    // Null means those of the environment, and the empty name none.
    curl_easy_setopt(easy_.get(), CURLOPT_PROXY, local ? "" : nullptr);
    head_ = {};
    next_.clear();
}

long UrlExchange::status() const {
    long code = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &code);
    return code;
}

std::optional<UrlResult> UrlExchange::transferEnded(CURLcode code) {
    if (!failure_.empty()) {
        return UrlError{failure_};
    }
    if (!next_.empty()) {
        url_ = next_;
        prepareTransfer();
        return std::nullopt;
    }
    if (code != CURLE_OK) {
        long systemError = 0;
        curl_easy_getinfo(easy_.get(), CURLINFO_OS_ERRNO, &systemError);
        return UrlError{failureReason(code, systemError)};
    }
    if (status() < firstFinalStatus) {
        return UrlError{senselessAnswer};
    }
    return UrlResponse{static_cast<int>(status()), std::move(body_)};
}

UrlExchange::Clock::time_point UrlExchange::deadline() const {
    return std::min(lively_ + wait(patience_),
                    begun_ + wait(std::chrono::duration<double>(settings_.longestExchange)));
}

bool UrlExchange::giveUp(std::string why) {
    failure_ = std::move(why);
    return false;
}

void UrlExchange::countReceived(std::size_t bytes) {
    receivedSince_ += bytes;
    if (static_cast<double>(receivedSince_) >= leastSpeed * patience_.count()) {
        receivedSince_ = 0;
        lively_ = Clock::now();
    }
}

bool UrlExchange::takeHeader(std::string_view line) {
    countReceived(line.size());
    headerBytes_ += line.size();
    if (headerBytes_ > largestHead) {
        return giveUp(tooLargeAnswer);
    }
    if (head_.ended) {
        return true;
    }
    if (line.starts_with("HTTP/")) {
        head_ = {};
    } else if (trimmed(line).empty()) {
        return headEnds();
    } else if (const auto colon = line.find(':'); colon != std::string_view::npos) {
        takeField(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
    }
    return true;
}

void UrlExchange::takeField(std::string_view name, std::string_view value) {
    if (sameName(name, "location")) {
        head_.location = value;
    } else if (sameName(name, "content-encoding") || sameName(name, "transfer-encoding")) {
        head_.understood = head_.understood && unpacksWithinLittle(value);
    }
}

bool UrlExchange::headEnds() {
    const long code = status();
    if (code < firstFinalStatus) {
        return true; // the real answer follows
    }
    head_.ended = true;
    constexpr std::array redirects{301L, 302L, 303L, 307L, 308L};
    if (!head_.location.empty() &&
        std::find(redirects.begin(), redirects.end(), code) != redirects.end()) {
        return follow(head_.location);
    }
    return head_.understood || giveUp(senselessAnswer);
}

bool UrlExchange::follow(const std::string& location) {
    const Url to = urlOf(location, url_);
    if (to == nullptr && writtenScheme(location).empty()) {
        return giveUp(senselessAnswer);
    }
    const std::string scheme = to == nullptr ? "" : partOf(to, CURLUPART_SCHEME);
    if (!isHttp(scheme) || (url_.starts_with("https:") && scheme != "https") ||
        (request_.mayRedirect && !request_.mayRedirect(url_, partOf(to, CURLUPART_URL)))) {
        return giveUp("the server refers to an address that is not secure");
    }
    if (++redirects_ > request_.mostRedirects) {
        return giveUp("the server refers from one address to the next without end");
    }
    next_ = partOf(to, CURLUPART_URL);
    return false; // its body is of no interest
}

bool UrlExchange::takeBody(std::string_view piece) {
    countReceived(piece.size());
    if (piece.size() > request_.largestBody - body_->size()) {
        return giveUp(tooLargeAnswer);
    }
    try {
        body_->append(piece);
    } catch (const std::bad_alloc&) { // which the library could not pass on
        return giveUp(tooLargeAnswer);
    }
    return true;
}

std::size_t UrlExchange::headerArrived(char* data, std::size_t one, std::size_t size, void* self) {
    return static_cast<UrlExchange*>(self)->takeHeader({data, one * size}) ? one * size : 0;
}

std::size_t UrlExchange::bodyArrived(char* data, std::size_t one, std::size_t size, void* self) {
    return static_cast<UrlExchange*>(self)->takeBody({data, one * size}) ? one * size : 0;
}

} // namespace quillon
