#include "anycameracontroller.h"
