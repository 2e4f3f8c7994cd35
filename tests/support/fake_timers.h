#pragma once
#include "toolkit/testing/fake_timers.h"
