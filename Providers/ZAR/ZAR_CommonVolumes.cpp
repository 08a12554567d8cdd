//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonVolumes.cpp: deleting volumes named by their paths, and the
// volumes' names looked up by their WWNs.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <stdlib.h>
#include <string.h>
#include <unistd.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

const int VOLUMES_BUSY = 74;
const int VOLUME_NOT_FOUND = 1119;
const int NOT_ALL_DELETED = 32768;
const unsigned int RETRY_SECONDS = 2;
const int MAX_RETRIES = 10;
// Longest WWN list of one volume query.
const Uint32 MAX_QUERY_TEXT = 255;

void _sleep(unsigned int seconds)
{
    sleep(seconds);
}

ZAR_Common::RetryWait _retryWait = &_sleep;

}  // namespace

ZAR_Common::RetryWait ZAR_Common::setRetryWait(RetryWait wait)
{
    RetryWait previous = _retryWait;
    _retryWait = wait ? wait : &_sleep;
    return previous;
}

int ZAR_Common::removeVVs(api_evtparam_t* event, Array<CIMObjectPath>& volumes, unsigned int flag)
{
    int retries = 0;
    for (;;) {
        api_name_t* names = 0;
        unsigned int count = 0;
        if (volumes.size() != 0) {
            int rc = fillInVVNames(volumes, &names, &count);
            if (rc != 0) {
                log_message(2, "Cannot find the volume\n");
                free(names);
                return rc;
            }
        }
        api_status_t status;
        int rc = guardedCall(&status,
                             [&]() { return api_removeVVs(event, names, count, flag, &status); });
        free(names);
        if (rc == 0)
            return count < volumes.size() ? NOT_ALL_DELETED : 0;
        if (rc == VOLUMES_BUSY) {
            if (retries > MAX_RETRIES - 1) {
                log_message(2, "Volumes are busy, cannot be removed\n");
                return 4;
            }
            retries++;
            _retryWait(RETRY_SECONDS);
            continue;
        }
        if (rc == VOLUME_NOT_FOUND)
            return NOT_ALL_DELETED;
        log_message(2, "Volume deletion failed\n");
        return 4;
    }
}

int ZAR_Common::fillInVVNames(Array<CIMObjectPath>& volumes, api_name_t** names,
                              unsigned int* count)
{
    if (names == 0 || count == 0) {
        log_message(2, "Invalid parameter memberCount or vvNames\n");
        return 5;
    }
    *names = 0;
    *count = 0;
    Array<String> found;
    int rc = fillInVVNames(volumes, found);
    if (rc != 0)
        return rc;
    api_name_t* table = (api_name_t*)calloc(volumes.size(), sizeof(api_name_t));
    if (table == 0) {
        log_message(2, "Unable to allocate vvNames\n");
        return 4;
    }
    unsigned int n = 0;
    for (Uint32 i = 0; i < found.size() && n < volumes.size(); i++) {
        CString text = found[i].getCString();
        strncpy(table[n].name, (const char*)text, sizeof(table[n].name) - 1);
        n++;
    }
    if (n == 0) {
        free(table);
        return 4;
    }
    *names = table;
    *count = n;
    return 0;
}

int ZAR_Common::fillInVVNames(Array<CIMObjectPath>& volumes, Array<String>& names)
{
    if (volumes.size() == 0) {
        log_message(3, "Empty volume list\n");
        return 5;
    }
    String all;
    for (Uint32 i = 0; i < volumes.size(); i++) {
        if (i != 0)
            all.append("|");
        all.append(getStringProperty(volumes[i], "DeviceID"));
    }

    // The array takes WWN lists of limited length: ask in pieces cut at a
    // separator.
    while (all.size() != 0) {
        String piece;
        if (all.size() > MAX_QUERY_TEXT) {
            Uint32 cut = PEG_NOT_FOUND;
            for (Uint32 i = 0; i <= MAX_QUERY_TEXT; i++) {
                if (all[i] == '|')
                    cut = i;
            }
            if (cut == PEG_NOT_FOUND) {
                piece = all;
                all.clear();
            } else {
                piece = all.subString(0, cut);
                all = all.subString(cut + 1);
            }
        } else {
            piece = all;
            all.clear();
        }
        log_message(4, "ZAR_Common::fillInVVNames: volumes %s\n", (const char*)piece.getCString());

        api_vv_filter_t filter;
        memset(&filter, 0, sizeof(filter));
        if (api_getvv_filter_init(&filter, volumes.size() + 1, volumes.size() + 1) != 0) {
            log_message(2, "Cannot create filter list\n");
            api_getvv_filter_free(&filter);
            return 4;
        }
        if (api_getvv_filter_add(&filter, API_VV_FILTER_WWN_LIST, 1,
                                 (const char*)piece.getCString()) != 0) {
            log_message(2, "Cannot update filter list\n");
            api_getvv_filter_free(&filter);
            return 4;
        }
        zar_u64 cursor = 0;
        zar_u32 count = 0;
        api_vv_t* records = 0;
        api_status_t status;
        int rc = guardedCall(
            &status, [&]() { return api_getVVs_chunk(&cursor, 0, &filter, &count, &records, 1); });
        api_getvv_filter_free(&filter);
        if (rc != 0) {
            log_message(2, "Failed to query volume\n");
            if (records)
                api_freeVVs(records);
            return 4;
        }
        for (zar_u32 i = 0; i < count; i++) {
            names.append(
                String(records[i].elementName,
                       (Uint32)strnlen(records[i].elementName, sizeof(records[i].elementName))));
        }
        if (records)
            api_freeVVs(records);
    }
    return names.size() == 0 ? 4 : 0;
}

PEGASUS_NAMESPACE_END
