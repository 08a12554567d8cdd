//%/////////////////////////////////////////////////////////////////////////////
// ArrayInternal.h: array equality, membership and sorting helpers. Internal
// header (not brought in by Array.h).
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_ArrayInternal_h
#define Pegasus_ArrayInternal_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>

PEGASUS_NAMESPACE_BEGIN

// Same size and element-wise ==.
template <class T>
Boolean operator==(const Array<T>& x, const Array<T>& y)
{
    if (x.size() != y.size())
        return false;
    for (Uint32 i = 0; i < x.size(); i++) {
        if (!(x[i] == y[i]))
            return false;
    }
    return true;
}

// True if some element == x (so case-insensitive for CIMName arrays).
template <class T>
Boolean Contains(const Array<T>& a, const T& x)
{
    Uint32 n = a.size();
    const T* p = a.getData();
    for (Uint32 i = 0; i < n; i++) {
        if (p[i] == x)
            return true;
    }
    return false;
}

// Sorts x so that no element is greater(...) than the one after it; equal
// elements keep their order.
template <class T, class Greater>
void ArrayBubbleSortBy(Array<T>& x, Greater greater)
{
    Uint32 n = x.size();
    if (n < 2)
        return;
    for (Uint32 i = 0; i < n - 1; i++) {
        for (Uint32 j = 0; j < n - 1 - i; j++) {
            if (greater(x[j], x[j + 1])) {
                T t = x[j];
                x[j] = x[j + 1];
                x[j + 1] = t;
            }
        }
    }
}

// Sorts ascending by operator>.
template <class T>
void BubbleSort(Array<T>& x)
{
    ArrayBubbleSortBy(x, [](const T& a, const T& b) { return a > b; });
}

// Sorts names by their spelling, case-sensitively.
inline void BubbleSort(Array<CIMName>& x)
{
    ArrayBubbleSortBy(
        x, [](const CIMName& a, const CIMName& b) { return a.getString() > b.getString(); });
}

inline void BubbleSort(Array<CIMNamespaceName>& x)
{
    ArrayBubbleSortBy(x, [](const CIMNamespaceName& a, const CIMNamespaceName& b) {
        return a.getString() > b.getString();
    });
}

PEGASUS_NAMESPACE_END

#endif
