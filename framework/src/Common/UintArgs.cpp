#include <Pegasus/Common/UintArgs.h>

#include <string>

PEGASUS_NAMESPACE_BEGIN

Uint32Arg::Uint32Arg() : _value(0), _null(true) {}
Uint32Arg::Uint32Arg(const Uint32Arg& x) : _value(x._value), _null(x._null) {}
Uint32Arg::Uint32Arg(Uint32 x) : _value(x), _null(false) {}
Uint32Arg::~Uint32Arg() {}

Uint32Arg& Uint32Arg::operator=(const Uint32Arg& x)
{
    _value = x._value;
    _null = x._null;
    return *this;
}

const Uint32& Uint32Arg::getValue() const
{
    return _value;
}

void Uint32Arg::setValue(Uint32 x)
{
    _value = x;
    _null = false;
}

Boolean Uint32Arg::isNull() const
{
    return _null;
}

void Uint32Arg::setNullValue()
{
    _value = 0;
    _null = true;
}

String Uint32Arg::toString()
{
    return _null ? String("NULL") : String(std::to_string(_value).c_str());
}

Boolean Uint32Arg::equal(const Uint32Arg& x) const
{
    return _null == x._null && (_null || _value == x._value);
}

Uint64Arg::Uint64Arg() : _value(0), _null(true) {}
Uint64Arg::Uint64Arg(const Uint64Arg& x) : _value(x._value), _null(x._null) {}
Uint64Arg::Uint64Arg(Uint64 x) : _value(x), _null(false) {}
Uint64Arg::~Uint64Arg() {}

Uint64Arg& Uint64Arg::operator=(const Uint64Arg& x)
{
    _value = x._value;
    _null = x._null;
    return *this;
}

const Uint64& Uint64Arg::getValue() const
{
    return _value;
}

void Uint64Arg::setValue(Uint64 x)
{
    _value = x;
    _null = false;
}

Boolean Uint64Arg::isNull() const
{
    return _null;
}

void Uint64Arg::setNullValue()
{
    _value = 0;
    _null = true;
}

String Uint64Arg::toString()
{
    return _null ? String("NULL") : String(std::to_string(_value).c_str());
}

Boolean Uint64Arg::equal(const Uint64Arg& x) const
{
    return _null == x._null && (_null || _value == x._value);
}

Boolean operator==(const Uint32Arg& x, const Uint32Arg& y)
{
    return x.equal(y);
}
Boolean operator==(const Uint64Arg& x, const Uint64Arg& y)
{
    return x.equal(y);
}

PEGASUS_NAMESPACE_END
