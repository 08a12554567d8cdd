// Status records and the texts of the array's error codes.
#include <cstring>
#include <string>

#include <zarapi.h>

extern "C" {

const char* api_errorCodeText(int code)
{
    switch (code) {
        case API_E_OK:
            return "Success";
        case API_E_FAILED:
            return "Internal error of the array";
        case API_E_NOT_OPEN:
            return "Array library is not open";
        case API_E_INVALID_ARG:
            return "Invalid argument";
        case API_E_NO_MEMORY:
            return "Out of memory";
        case API_E_EXISTS:
            return "Object already exists";
        case API_E_SEM_TIMEOUT:
            return "Semaphore Timed-Out";
        case API_E_VV_BUSY:
            return "Volume is busy";
        case API_E_PORT_INVALID:
            return "Invalid target port";
        case API_E_HOST_NOT_FOUND:
            return "Host not found";
        case API_E_HOSTSET_NOT_FOUND:
            return "Host set not found";
        case API_E_VLUN_NOT_FOUND:
            return "VLUN not found";
        case API_E_HOST_EXPORTED:
            return "Host has exported volumes";
        case API_E_PATH_NOT_FOUND:
            return "Host path not found";
        case API_E_PATH_IN_USE:
            return "Initiator belongs to another host";
        case API_E_VLUN_EXISTS:
            return "Volume is already exported to this target";
        case API_E_DOMAIN:
            return "Volume and host are in different domains";
        case API_E_ACCESS_DENIED:
            return "Access denied";
        case API_E_USER_NOT_FOUND:
            return "User not found";
        case API_E_PORT_EXPORTED:
            return "Port has exported volumes";
        case API_E_VV_NOT_FOUND:
            return "Volume not found";
        case API_E_LUN_INVALID:
            return "LUN is invalid or already in use";
        default:
            return "Unknown error";
    }
}

void api_initStatus(api_status_t* status)
{
    if (!status)
        return;
    status->code = 0;
    status->text[0] = '\0';
}

void errinfo_set_str(api_status_t* status, int code, const char* text)
{
    if (!status)
        return;
    status->code = code;
    const char* t = text ? text : "";
    size_t n = strnlen(t, sizeof status->text - 1);
    memcpy(status->text, t, n);
    status->text[n] = '\0';
}

static int errorText(char* buffer, int size, const api_status_t* status, bool newline)
{
    if (!buffer || size <= 0)
        return status ? status->code : API_E_INVALID_ARG;
    if (!status) {
        buffer[0] = '\0';
        return API_E_INVALID_ARG;
    }
    std::string text =
        status->text[0] ? std::string(status->text) : std::string(api_errorCodeText(status->code));
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    if (newline)
        text += '\n';
    size_t n = text.size() < (size_t)size - 1 ? text.size() : (size_t)size - 1;
    memcpy(buffer, text.data(), n);
    buffer[n] = '\0';
    return status->code;
}

int api_getErrorText(char* buffer, int size, const api_status_t* status)
{
    return errorText(buffer, size, status, true);
}

int api_getErrorTextNoNL(char* buffer, int size, const api_status_t* status)
{
    return errorText(buffer, size, status, false);
}

}  // extern "C"
