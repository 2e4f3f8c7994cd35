#pragma once
#include "toolkit/testing/fake_machine.h"
