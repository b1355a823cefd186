#include "FakeInstallation.h"

#include "Foundation.h"

#include <ServiceManagement/ServiceManagement.h>
#include <Sparkle/Sparkle.h>

#include <map>

using quillon::fakes::arrayOf;
using quillon::fakes::fakeInstallation;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

namespace {

std::map<std::string, id>& info() {
    static std::map<std::string, id> values;
    return values;
}

id<SPUUpdaterDelegate> lastUpdaterDelegate = nil;

BOOL changeLoginItem(const char* call, SMAppServiceStatus status, NSError** error) {
    auto& installation = fakeInstallation();
    installation.loginItemCalls.emplace_back(call);
    if (!installation.loginItemFailure) {
        installation.loginItemStatus = status;
        return YES;
    }
    if (error) {
        NSDictionary* userInfo =
            [NSDictionary dictionaryWithObject:stringOf(*installation.loginItemFailure)
                                        forKey:NSLocalizedDescriptionKey];
        *error = [NSError errorWithDomain:@"SMAppServiceErrorDomain" code:1 userInfo:userInfo];
    }
    return NO;
}

} // namespace

@implementation NSBundle
+ (NSBundle*)mainBundle {
    static NSBundle* const bundle = [[NSBundle alloc] init];
    return bundle;
}
- (NSString*)bundleIdentifier {
    const auto& identifier = fakeInstallation().bundleIdentifier;
    return identifier ? stringOf(*identifier) : nil;
}
- (id)objectForInfoDictionaryKey:(NSString*)key {
    const auto found = info().find(utf8(key));
    return found == info().end() ? nil : found->second;
}
@end

@implementation SMAppService
+ (SMAppService*)mainAppService {
    static SMAppService* const service = [[SMAppService alloc] init];
    return service;
}
- (SMAppServiceStatus)status {
    return (SMAppServiceStatus)fakeInstallation().loginItemStatus;
}
- (BOOL)registerAndReturnError:(NSError**)error {
    return changeLoginItem("register", SMAppServiceStatusEnabled, error);
}
- (BOOL)unregisterAndReturnError:(NSError**)error {
    return changeLoginItem("unregister", SMAppServiceStatusNotRegistered, error);
}
@end

@implementation SPUStandardUpdaterController
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(id<SPUStandardUserDriverDelegate>)userDriverDelegate {
    fakeInstallation().updaterRequests.push_back(
        {startUpdater, updaterDelegate != nil, userDriverDelegate != nil});
    lastUpdaterDelegate = updaterDelegate;
    return self;
}
- (SPUUpdater*)updater {
    return nil;
}
- (void)checkForUpdates:(id)sender {
    fakeInstallation().updateChecks.push_back(sender != nil);
}
@end

NSString* NSTemporaryDirectory() { return stringOf(fakeInstallation().temporaryFolder); }

NSArray<NSString*>* NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory,
                                                        NSSearchPathDomainMask domains,
                                                        BOOL expandTilde) {
    fakeInstallation().folderRequests.push_back({directory, domains, expandTilde});
    std::vector<id> paths;
    for (const auto& path : fakeInstallation().searchPaths)
        paths.push_back(stringOf(path));
    return arrayOf(paths);
}

namespace quillon::fakes {

void FakeInstallation::setInfo(const std::string& key, void* object) { info()[key] = (id)object; }

std::optional<std::string> FakeInstallation::askedFeed() const {
    NSString* feed = [lastUpdaterDelegate feedURLStringForUpdater:nil];
    return feed == nil ? std::nullopt : std::optional(utf8(feed));
}

void FakeInstallation::reset() {
    info().clear();
    lastUpdaterDelegate = nil;
    *this = {};
}

FakeInstallation& fakeInstallation() {
    static FakeInstallation installation;
    return installation;
}

} // namespace quillon::fakes
