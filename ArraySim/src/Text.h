// Text.h - text forms of the array's identifiers: port positions, WWNs,
// target port names, and the checks of names.
#ifndef ZARSIM_TEXT_H
#define ZARSIM_TEXT_H

#include <cstdint>
#include <string>

#include <zarapi.h>

namespace zarsim {

// "N:S:P" of a position.
std::string lpidText(lpid_t pos);

// Position from node, slot and port.
inline lpid_t makeLpid(int node, int slot, int port)
{
    return (lpid_t)(node * 128 + slot * 8 + port);
}

// True for a position of a real port (node 0-7, slot 0-9, port 1-4).
bool validPortPosition(lpid_t pos);

// 16 upper-case hexadecimal digits.
std::string hex16(uint64_t v);

// Parses exactly 16 hexadecimal digits.
bool parseWwn16(const std::string& text, uint64_t* out);

// The WWN of a Fibre Channel target port (node, slot and port at bits 56, 52
// and 48) of the system with serial number serial.
uint64_t targetPortWwn(lpid_t pos, uint32_t serial);

// The iSCSI name of a target port: the vendor prefix and 16 hex digits with
// the same layout.
std::string targetPortIscsiName(lpid_t pos, uint32_t serial);

// The WWN text (32 hex digits) of volume id of the system with serial.
std::string volumeWwn(uint32_t serial, uint32_t id);

// The WWN text of a volume given as two 64-bit halves.
std::string volumeWwnFromParts(uint64_t high, uint64_t low);

// Checks a host, host set, volume or domain name: 1 to 31 characters of
// letters, digits, "-", "_" and ".".  Returns an empty text when valid, else
// the reason.
std::string checkName(const std::string& what, const std::string& name);

// Lower-case copy.
std::string lower(std::string s);

}  // namespace zarsim

#endif
