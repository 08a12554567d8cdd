//%/////////////////////////////////////////////////////////////////////////////
// Array.h: the Array<T> class template with its member definitions. Each
// object header declares the Array of its own type by including this header.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Array_h
#define Pegasus_Array_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/ArrayInter.h>
#include <Pegasus/Common/ArrayImpl.h>

#endif
