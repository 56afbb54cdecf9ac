// The interfaces of this folder have no code of their own; this file makes the folder a library that is compiled.
#include "platform/platform.h"
