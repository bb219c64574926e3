// Declarations of the parts of libdispatch that the program uses, written from its manual pages.
#pragma once

@protocol OS_dispatch_queue
@end
typedef id<OS_dispatch_queue> dispatch_queue_t;
typedef void (^dispatch_block_t)(void);

extern "C" {

dispatch_queue_t _Nonnull dispatch_get_main_queue(void);
void dispatch_async(dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block);
}
