#include "Support.h"
