#include "settings/settings.h"
