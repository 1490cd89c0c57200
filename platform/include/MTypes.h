// Fixed-width types of the TV platform.
#pragma once

#include <cstdint>

typedef unsigned char MAPI_BOOL;
typedef unsigned char MAPI_U8;
typedef unsigned short MAPI_U16;
typedef unsigned int MAPI_U32;
typedef unsigned long long MAPI_U64;
typedef signed char MAPI_S8;
typedef short MAPI_S16;
typedef int MAPI_S32;
typedef int BOOL;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
