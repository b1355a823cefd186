#pragma once

#include_next <fcntl.h>

#ifndef F_FULLFSYNC
#define F_FULLFSYNC 51
#endif
