//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArraySemaphore.h: the array library's semaphore held for a scope.
// Every call into the array library runs between cim_sem_wait and
// cim_sem_post; this guard takes the semaphore when it is built and gives it
// back when it goes, also when an exception leaves the scope. A wait that
// times out leaves held() false, and then nothing is given back.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ArraySemaphore_h
#define ZAR_ArraySemaphore_h

#include <Pegasus/Common/Config.h>

#include <zarapi.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ArraySemaphore {
public:
    ZAR_ArraySemaphore() : _wait(cim_sem_wait()) {}
    ~ZAR_ArraySemaphore()
    {
        if (_wait == 0)
            cim_sem_post();
    }
    bool held() const { return _wait == 0; }
    // What cim_sem_wait returned (non-zero: it timed out).
    int waitResult() const { return _wait; }

private:
    ZAR_ArraySemaphore(const ZAR_ArraySemaphore&);
    ZAR_ArraySemaphore& operator=(const ZAR_ArraySemaphore&);
    const int _wait;
};

PEGASUS_NAMESPACE_END

#endif
