#include "Platform/MacOS/MacUrlSession.h"

#include "Platform/MacOS/NSStrings.h"
#include "Platform/MacOS/UrlFetch.h"

#import <Foundation/Foundation.h>

#include <cmath>
#include <utility>

/// What the system asks and tells about one fetch, on a thread of its own.
@interface QuillonUrlFetchDelegate : NSObject <NSURLSessionDataDelegate> {
    std::shared_ptr<quillon::UrlFetch> fetch_;
}
- (instancetype)initWithFetch:(std::shared_ptr<quillon::UrlFetch>)fetch;
@end

namespace {

std::string scheme(NSURL* url) { return quillon::utf8Text([[url scheme] lowercaseString]); }
std::string address(NSURL* url) { return quillon::utf8Text([url absoluteString]); }

} // namespace

@implementation QuillonUrlFetchDelegate

- (instancetype)initWithFetch:(std::shared_ptr<quillon::UrlFetch>)fetch {
    self = [super init];
    if (self != nil) {
        fetch_ = std::move(fetch);
    }
    return self;
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
    (void)session;
    NSURL* from = [response URL];
    NSURL* to = [request URL];
    if (fetch_->follows(address(from), scheme(from), address(to), scheme(to))) {
        completionHandler(request);
        return;
    }
    [task cancel];
    completionHandler(nil);
}

- (void)URLSession:(NSURLSession*)session
              dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveResponse:(NSURLResponse*)response
     completionHandler:(void (^)(NSURLSessionResponseDisposition))completionHandler {
    (void)session;
    (void)dataTask;
    completionHandler(fetch_->takesBodyOf([response expectedContentLength])
                          ? NSURLSessionResponseAllow
                          : NSURLSessionResponseCancel);
}

- (void)URLSession:(NSURLSession*)session
          dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveData:(NSData*)data {
    (void)session;
    if (!fetch_->takeBody({static_cast<const char*>([data bytes]), [data length]})) {
        [dataTask cancel];
    }
}

- (void)URLSession:(NSURLSession*)session
                    task:(NSURLSessionTask*)task
    didCompleteWithError:(NSError*)error {
    (void)session;
    NSURLResponse* response = [task response];
    std::optional<int> statusCode;
    if ([response isKindOfClass:[NSHTTPURLResponse class]]) {
        statusCode = static_cast<int>([static_cast<NSHTTPURLResponse*>(response) statusCode]);
    }
    fetch_->ended(statusCode, error == nil
                                  ? std::nullopt
                                  : std::optional(quillon::utf8Text([error localizedDescription])));
}

@end

namespace quillon {

namespace {

constexpr double longestExchange = 15 * 60; // seconds

class MacUrlTask final : public UrlTask {
  public:
    MacUrlTask(std::shared_ptr<UrlFetch> fetch, NSURLSessionTask* task)
        : fetch_(std::move(fetch)), task_(task) {}
    MacUrlTask(const MacUrlTask&) = delete;
    MacUrlTask& operator=(const MacUrlTask&) = delete;
    ~MacUrlTask() override {
        fetch_->cancel();
        [task_ cancel];
    }

  private:
    std::shared_ptr<UrlFetch> fetch_;
    NSURLSessionTask* task_;
};

double patienceOf(const UrlRequest& request) {
    return std::isfinite(request.patience) && request.patience > 0 ? request.patience
                                                                   : UrlRequest{}.patience;
}

NSURLSessionTask* begin(NSURL* url, double patience, std::shared_ptr<UrlFetch> fetch) {
    NSURLSessionConfiguration* configuration =
        [NSURLSessionConfiguration defaultSessionConfiguration];
    [configuration setTimeoutIntervalForRequest:patience];
    [configuration setTimeoutIntervalForResource:longestExchange];
    QuillonUrlFetchDelegate* delegate =
        [[QuillonUrlFetchDelegate alloc] initWithFetch:std::move(fetch)];
    NSURLSession* session = [NSURLSession sessionWithConfiguration:configuration
                                                          delegate:delegate
                                                     delegateQueue:nil];
    NSURLRequest* request = [NSURLRequest requestWithURL:url
                                             cachePolicy:NSURLRequestReloadIgnoringLocalCacheData
                                         timeoutInterval:patience];
    NSURLSessionTask* task = [session dataTaskWithRequest:request];
    [task resume];
    // The session keeps its delegate until it ends.
    [session finishTasksAndInvalidate];
    return task;
}

} // namespace

std::unique_ptr<UrlTask> MacUrlSession::fetchData(UrlRequest request,
                                                  std::function<void(UrlResult)> completion) {
    @autoreleasepool {
        NSString* text = nativeString(request.url);
        NSURL* url = text == nil ? nil : [NSURL URLWithString:text];
        const double patience = patienceOf(request);
        const auto fetch =
            std::make_shared<UrlFetch>(runLoop_, std::move(request), std::move(completion));
        if (const std::string kind = scheme(url); kind != "http" && kind != "https") {
            fetch->ended(std::nullopt, "the address is not one of the web");
            return std::make_unique<MacUrlTask>(fetch, nil);
        }
        return std::make_unique<MacUrlTask>(fetch, begin(url, patience, fetch));
    }
}

} // namespace quillon
