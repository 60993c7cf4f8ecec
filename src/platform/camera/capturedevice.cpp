// The port's signals are compiled here.
#include "capturedevice.h"
