// What widl's output includes in place of automation.idl.
#pragma once

#include <oaidl.h>
#include <ocidl.h>
