#pragma once

#include <Foundation/NSData.h>
#include <Foundation/NSOperation.h>
#include <Foundation/NSURLRequest.h>
#include <Foundation/NSURLResponse.h>

@class NSURLSession;
@class NSURLSessionConfiguration;
@class NSURLSessionDataTask;
@class NSURLSessionTask;
@protocol NSURLSessionDelegate;

@interface NSURLSession : NSObject
@property(class, readonly, strong) NSURLSession* sharedSession;
+ (NSURLSession*)sessionWithConfiguration:(NSURLSessionConfiguration*)configuration
                                 delegate:(id<NSURLSessionDelegate>)delegate
                            delegateQueue:(NSOperationQueue*)queue;
@property(readonly, retain) NSOperationQueue* delegateQueue;
@property(readonly, retain) id<NSURLSessionDelegate> delegate;
@property(readonly, copy) NSURLSessionConfiguration* configuration;
- (void)finishTasksAndInvalidate;
- (void)invalidateAndCancel;
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request;
@end

typedef NS_ENUM(NSInteger, NSURLSessionTaskState) {
    NSURLSessionTaskStateRunning = 0,
    NSURLSessionTaskStateSuspended = 1,
    NSURLSessionTaskStateCanceling = 2,
    NSURLSessionTaskStateCompleted = 3,
};

@interface NSURLSessionTask : NSObject <NSCopying>
@property(readonly) NSUInteger taskIdentifier;
@property(readonly, copy) NSURLRequest* originalRequest;
@property(readonly, copy) NSURLRequest* currentRequest;
@property(readonly, copy) NSURLResponse* response;
- (void)cancel;
@property(readonly) NSURLSessionTaskState state;
@property(readonly, copy) NSError* error;
- (void)suspend;
- (void)resume;
@end

@interface NSURLSessionDataTask : NSURLSessionTask
@end

@interface NSURLSessionConfiguration : NSObject <NSCopying>
@property(class, readonly, strong) NSURLSessionConfiguration* defaultSessionConfiguration;
@property(class, readonly, strong) NSURLSessionConfiguration* ephemeralSessionConfiguration;
@property NSURLRequestCachePolicy requestCachePolicy;
@property NSTimeInterval timeoutIntervalForRequest;
@property NSTimeInterval timeoutIntervalForResource;
@end

typedef NS_ENUM(NSInteger, NSURLSessionResponseDisposition) {
    NSURLSessionResponseCancel = 0,
    NSURLSessionResponseAllow = 1,
};

@protocol NSURLSessionDelegate <NSObject>
@optional
- (void)URLSession:(NSURLSession*)session didBecomeInvalidWithError:(NSError*)error;
@end

@protocol NSURLSessionTaskDelegate <NSURLSessionDelegate>
@optional
- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler;
- (void)URLSession:(NSURLSession*)session
                    task:(NSURLSessionTask*)task
    didCompleteWithError:(NSError*)error;
@end

@protocol NSURLSessionDataDelegate <NSURLSessionTaskDelegate>
@optional
- (void)URLSession:(NSURLSession*)session
              dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveResponse:(NSURLResponse*)response
     completionHandler:(void (^)(NSURLSessionResponseDisposition disposition))completionHandler;
- (void)URLSession:(NSURLSession*)session
          dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveData:(NSData*)data;
@end
