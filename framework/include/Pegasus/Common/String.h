//%/////////////////////////////////////////////////////////////////////////////
// String: a text of UTF-16 code units with value semantics (copies share the
// buffer until one of them is changed). CString: an owned UTF-8 copy of a
// String, as returned by String::getCString().
//
// Text given as const char* is UTF-8 and is validated: invalid bytes throw
// Exception, a null pointer throws NullPointer. Case operations fold ASCII
// letters only.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_String_h
#define Pegasus_String_h

#include <iostream>
#include <cstdarg>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/Char16.h>

PEGASUS_NAMESPACE_BEGIN

class String;
struct StringRep;

// An owned, NUL-terminated UTF-8 byte buffer. The pointer obtained through the
// conversion operator is valid only while this object lives: cast a
// temporary in the same full expression, (const char*)s.getCString().
class PEGASUS_COMMON_LINKAGE CString {
public:
    // Holds a null pointer.
    CString();

    // Copies the buffer.
    CString(const CString& cstr);

    ~CString();

    CString& operator=(const CString& cstr);

    // The buffer (null for a default-constructed CString).
    operator const char*() const;

private:
    // Takes ownership of a buffer allocated with new char[].
    CString(char* cstr);
    friend class String;
    char* _rep;
};

class PEGASUS_COMMON_LINKAGE String {
public:
    // An empty string.
    static const String EMPTY;

    // An empty string.
    String();

    String(const String& str);

    // The first n code units of str; throws IndexOutOfBoundsException if n > str.size().
    String(const String& str, Uint32 n);

    // Copies the NUL-terminated code units; a null pointer throws NullPointer.
    String(const Char16* str);

    // Copies n code units.
    String(const Char16* str, Uint32 n);

    // Decodes NUL-terminated UTF-8 (implicit).
    String(const char* str);

    // Decodes n bytes of UTF-8.
    String(const char* str, Uint32 n);

    ~String();

    String& operator=(const String& str);
    String& assign(const String& str);
    String& assign(const Char16* str);
    String& assign(const Char16* str, Uint32 n);
    String& assign(const char* str);
    String& assign(const char* str, Uint32 n);

    // Makes the string empty.
    void clear();

    // Makes room for capacity code units without changing the content.
    void reserveCapacity(Uint32 capacity);

    // Number of UTF-16 code units (a character outside the BMP counts as 2).
    Uint32 size() const;

    // The code units, NUL-terminated; valid until the string is next changed.
    const Char16* getChar16Data() const;

    // A UTF-8 copy of the text.
    CString getCString() const;

    // The code unit at index; index == size() gives the terminating 0 and a
    // larger index throws IndexOutOfBoundsException.
    Char16& operator[](Uint32 index);
    const Char16 operator[](Uint32 index) const;

    String& append(const Char16& c);
    String& append(const Char16* str, Uint32 n);
    String& append(const String& str);

    // Removes size code units from index (to the end for PEG_NOT_FOUND).
    // Throws IndexOutOfBoundsException if the range passes the end.
    void remove(Uint32 index, Uint32 size = PEG_NOT_FOUND);

    // Up to n code units from index; empty if index >= size(), clipped at the end.
    String subString(Uint32 index, Uint32 n = PEG_NOT_FOUND) const;

    // Index of the first c, or PEG_NOT_FOUND.
    Uint32 find(Char16 c) const;

    // Index of the first c at or after index; PEG_NOT_FOUND if index == size(),
    // IndexOutOfBoundsException if index > size().
    Uint32 find(Uint32 index, Char16 c) const;

    // Index of the first occurrence of s, or PEG_NOT_FOUND.
    Uint32 find(const String& s) const;

    // Index of the last c, or PEG_NOT_FOUND.
    Uint32 reverseFind(Char16 c) const;

    // Lower-cases the ASCII letters in place.
    void toLower();

    // Appends printf-style formatted text (the result is read as UTF-8).
    PEGASUS_FORMAT(2, 3)
    void appendPrintf(const char* format, ...);

    // Upper-cases the ASCII letters in place.
    void toUpper();

    // Code-unit comparisons: <0, 0 or >0. The first form looks at no more than
    // n code units.
    static int compare(const String& s1, const String& s2, Uint32 n);
    static int compare(const String& s1, const String& s2);

    // As compare(), with ASCII letters folded to lower case.
    static int compareNoCase(const String& s1, const String& s2);

    // Exact code-unit equality.
    static Boolean equal(const String& s1, const String& s2);

    // Equal sizes and equal code units after ASCII case folding.
    static Boolean equalNoCase(const String& s1, const String& s2);

    // Concatenations.
    String(const String& s1, const String& s2);
    String(const String& s1, const char* s2);
    String(const char* s1, const String& s2);

    String& operator=(const char* str);
    Uint32 find(const char* s) const;
    static Boolean equal(const String& s1, const char* s2);
    static int compare(const String& s1, const char* s2);
    String& append(const char* str);
    String& append(const char* str, Uint32 size);
    static Boolean equalNoCase(const String& s1, const char* s2);

private:
    StringRep* _rep;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const String& str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator==(const String& str1, const char* str2);
PEGASUS_COMMON_LINKAGE Boolean operator==(const char* str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const String& str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const String& str1, const char* str2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const char* str1, const String& str2);

// Writes code units 1..255 as single bytes and every other unit as \xNNNN.
PEGASUS_COMMON_LINKAGE PEGASUS_STD(ostream) & operator<<(PEGASUS_STD(ostream) & os,
                                                         const String& str);

PEGASUS_COMMON_LINKAGE String operator+(const String& str1, const String& str2);
PEGASUS_COMMON_LINKAGE String operator+(const String& str1, const char* str2);
PEGASUS_COMMON_LINKAGE String operator+(const char* str1, const String& str2);

// Orderings by String::compare().
PEGASUS_COMMON_LINKAGE Boolean operator<(const String& str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator<=(const String& str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator>(const String& str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator>=(const String& str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator<(const String& str1, const char* str2);
PEGASUS_COMMON_LINKAGE Boolean operator<=(const String& str1, const char* str2);
PEGASUS_COMMON_LINKAGE Boolean operator>(const String& str1, const char* str2);
PEGASUS_COMMON_LINKAGE Boolean operator>=(const String& str1, const char* str2);
PEGASUS_COMMON_LINKAGE Boolean operator<(const char* str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator<=(const char* str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator>(const char* str1, const String& str2);
PEGASUS_COMMON_LINKAGE Boolean operator>=(const char* str1, const String& str2);

PEGASUS_NAMESPACE_END

#endif
