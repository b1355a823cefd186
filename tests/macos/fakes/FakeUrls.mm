#include "FakeUrls.h"

#include "Foundation.h"

using quillon::fakes::FakeUrls;
using quillon::fakes::fakeUrls;
using quillon::fakes::stateOf;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

namespace {

struct RequestState {
    NSURL* url = nil;
    NSURLRequestCachePolicy cachePolicy = NSURLRequestUseProtocolCachePolicy;
    NSTimeInterval timeout = 60;
};

struct ResponseState {
    NSURL* url = nil;
    NSInteger status = 0;
    long long expectedBytes = -1;
};

struct ConfigurationState {
    bool isEphemeral = false;
    NSTimeInterval timeoutForRequest = 60;
    NSTimeInterval timeoutForResource = 7.0 * 24 * 60 * 60;
};

struct SessionState {
    NSURLSessionConfiguration* configuration = nil;
    id<NSURLSessionDataDelegate> delegate = nil;
    NSOperationQueue* queue = nil;
};

struct TaskState {
    NSURLSession* session = nil;
    NSURLResponse* response = nil;
    std::size_t fetch = 0;
};

std::vector<NSURLSessionDataTask*>& tasks() {
    static std::vector<NSURLSessionDataTask*> all;
    return all;
}

NSURL* urlOf(const std::string& address) { return [NSURL URLWithString:stringOf(address)]; }

NSURLSession* sessionOf(std::size_t fetch) { return stateOf<TaskState>(tasks().at(fetch)).session; }

id<NSURLSessionDataDelegate> delegateOf(std::size_t fetch) {
    return stateOf<SessionState>(sessionOf(fetch)).delegate;
}

NSURLResponse* response(NSURL* url, std::optional<int> status, long long expectedBytes) {
    NSURLResponse* made = status ? [[NSHTTPURLResponse alloc] init] : [[NSURLResponse alloc] init];
    stateOf<ResponseState>(made) = {url, status.value_or(0), expectedBytes};
    return made;
}

} // namespace

@implementation NSURLRequest
+ (instancetype)requestWithURL:(NSURL*)url
                   cachePolicy:(NSURLRequestCachePolicy)cachePolicy
               timeoutInterval:(NSTimeInterval)timeout {
    const id request = [[self alloc] init];
    stateOf<RequestState>(request) = {url, cachePolicy, timeout};
    return request;
}
+ (instancetype)requestWithURL:(NSURL*)url {
    return [self requestWithURL:url
                    cachePolicy:NSURLRequestUseProtocolCachePolicy
                timeoutInterval:60];
}
- (NSURL*)URL {
    return stateOf<RequestState>(self).url;
}
- (NSURLRequestCachePolicy)cachePolicy {
    return stateOf<RequestState>(self).cachePolicy;
}
- (NSTimeInterval)timeoutInterval {
    return stateOf<RequestState>(self).timeout;
}
@end

@implementation NSURLResponse
- (NSURL*)URL {
    return stateOf<ResponseState>(self).url;
}
- (long long)expectedContentLength {
    return stateOf<ResponseState>(self).expectedBytes;
}
@end

@implementation NSHTTPURLResponse
- (NSInteger)statusCode {
    return stateOf<ResponseState>(self).status;
}
@end

@implementation NSURLSessionConfiguration
+ (NSURLSessionConfiguration*)defaultSessionConfiguration {
    return [[self alloc] init];
}
+ (NSURLSessionConfiguration*)ephemeralSessionConfiguration {
    const id configuration = [[self alloc] init];
    stateOf<ConfigurationState>(configuration).isEphemeral = true;
    return configuration;
}
- (void)setTimeoutIntervalForRequest:(NSTimeInterval)timeout {
    stateOf<ConfigurationState>(self).timeoutForRequest = timeout;
}
- (void)setTimeoutIntervalForResource:(NSTimeInterval)timeout {
    stateOf<ConfigurationState>(self).timeoutForResource = timeout;
}
@end

@implementation NSURLSession
+ (NSURLSession*)sessionWithConfiguration:(NSURLSessionConfiguration*)configuration
                                 delegate:(id<NSURLSessionDelegate>)delegate
                            delegateQueue:(NSOperationQueue*)queue {
    NSURLSession* session = [[NSURLSession alloc] init];
    stateOf<SessionState>(session) = {configuration, (id<NSURLSessionDataDelegate>)delegate, queue};
    return session;
}
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request {
    const auto& session = stateOf<SessionState>(self);
    const auto& configuration = stateOf<ConfigurationState>(session.configuration);
    FakeUrls::Fetch fetch;
    fetch.url = utf8([[request URL] absoluteString]);
    fetch.cachePolicy = [request cachePolicy];
    fetch.requestTimeout = [request timeoutInterval];
    fetch.isEphemeral = configuration.isEphemeral;
    fetch.hasDelegateQueue = session.queue != nil;
    fetch.timeoutForRequest = configuration.timeoutForRequest;
    fetch.timeoutForResource = configuration.timeoutForResource;
    NSURLSessionDataTask* task = [[NSURLSessionDataTask alloc] init];
    stateOf<TaskState>(task) = {self, nil, tasks().size()};
    tasks().push_back(task);
    fakeUrls().fetches.push_back(fetch);
    return task;
}
- (void)finishTasksAndInvalidate {
    for (NSURLSessionDataTask* task : tasks()) {
        const auto& state = stateOf<TaskState>(task);
        if (state.session == self)
            fakeUrls().fetches[state.fetch].endsSession = true;
    }
}
@end

@implementation NSURLSessionTask
- (NSURLResponse*)response {
    return stateOf<TaskState>(self).response;
}
- (void)resume {
    fakeUrls().fetches[stateOf<TaskState>(self).fetch].isResumed = true;
}
- (void)cancel {
    ++fakeUrls().fetches[stateOf<TaskState>(self).fetch].cancels;
}
@end

@implementation NSURLSessionDataTask
@end

namespace quillon::fakes {

bool FakeUrls::respond(std::size_t fetch, std::optional<int> status, long long expectedBytes) {
    NSURLSessionDataTask* task = tasks().at(fetch);
    NSURLResponse* head = response(urlOf(fetches[fetch].url), status, expectedBytes);
    stateOf<TaskState>(task).response = head;
    __block bool isAccepted = false;
    [delegateOf(fetch) URLSession:sessionOf(fetch)
                         dataTask:task
               didReceiveResponse:head
                completionHandler:^(NSURLSessionResponseDisposition disposition) {
                  isAccepted = disposition == NSURLSessionResponseAllow;
                }];
    return isAccepted;
}

bool FakeUrls::redirect(std::size_t fetch, const std::string& from, const std::string& to) {
    constexpr int found = 302;
    NSURLRequest* next = [NSURLRequest requestWithURL:urlOf(to)];
    __block NSURLRequest* taken = nil;
    [delegateOf(fetch) URLSession:sessionOf(fetch)
                              task:tasks().at(fetch)
        willPerformHTTPRedirection:(NSHTTPURLResponse*)response(urlOf(from), found, 0)
                        newRequest:next
                 completionHandler:^(NSURLRequest* request) {
                   taken = request;
                 }];
    return taken == next;
}

void FakeUrls::send(std::size_t fetch, const std::string& bytes) {
    [delegateOf(fetch) URLSession:sessionOf(fetch)
                         dataTask:tasks().at(fetch)
                   didReceiveData:[NSData dataWithBytes:bytes.data() length:bytes.size()]];
}

void FakeUrls::complete(std::size_t fetch, std::optional<std::string> failure) {
    NSError* error = nil;
    if (failure) {
        NSDictionary* userInfo = [NSDictionary dictionaryWithObject:stringOf(*failure)
                                                             forKey:NSLocalizedDescriptionKey];
        error = [NSError errorWithDomain:@"NSURLErrorDomain" code:-1 userInfo:userInfo];
    }
    [delegateOf(fetch) URLSession:sessionOf(fetch)
                             task:tasks().at(fetch)
             didCompleteWithError:error];
}

void FakeUrls::reset() {
    tasks().clear();
    fetches.clear();
}

FakeUrls& fakeUrls() {
    static FakeUrls urls;
    return urls;
}

} // namespace quillon::fakes
