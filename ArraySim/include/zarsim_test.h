/*
 * zarsim_test.h - test control of the simulated array.
 *
 * For tests, fixtures and the administration tool only; provider code never
 * includes this header.  All calls are thread-safe.  Calls that change the
 * array return 0 or an array error code (API_E_* of zarapi.h).
 */
#ifndef ZARSIM_TEST_H
#define ZARSIM_TEST_H

#include <stddef.h>

#include <zarapi.h>

#ifdef __cplusplus
extern "C" {
#endif

/* --- The array itself ---------------------------------------------------- */

/* Opens a private array: path NULL or ":memory:" for an in-memory one, else
 * the file path (created when missing).  Replaces the open array.  Returns 0
 * or API_E_NOT_OPEN. */
int zarsim_open(const char* path);

/* Opens a new private array in a fresh temporary file and writes its path
 * into buffer (size bytes).  Returns 0 or API_E_NOT_OPEN. */
int zarsim_open_temp(char* buffer, size_t size);

/* Closes the open array; the next library call opens the default one. */
void zarsim_close(void);

/* Fills the array with the deterministic demo configuration (nodes, ports,
 * volumes, hosts, paths, logins, a host set, exports of the four kinds and a
 * dormant one).  The array must hold no hosts, volumes or ports yet. */
int zarsim_seed_demo(void);

/* --- Faults and timing --------------------------------------------------- */

/* Makes the next n calls of operation (its function name, for example
 * "api_createVLUN") fail with code and text, without touching the array. */
void zarsim_fail_next(const char* operation, int n, int code, const char* text);

/* Makes the next n cim_sem_wait calls time out at once. */
void zarsim_sem_timeout_next(int n);

/* Makes every call of operation sleep ms milliseconds first (0 clears). */
void zarsim_delay(const char* operation, int ms);

/* Clears all faults, time-outs and delays. */
void zarsim_clear_faults(void);

/* Sets the PBKDF2 iteration count used for new password hashes (tests use a
 * low one to stay quick); 0 restores the default. */
void zarsim_set_hash_iterations(int iterations);

/* --- Log capture --------------------------------------------------------- */

/* Starts (on non-zero) or stops capturing log lines that pass the level
 * threshold; captured lines are not written to the log file. */
void zarsim_capture_log(int on);

/* Number of captured lines. */
size_t zarsim_captured_count(void);

/* Copies captured line i (as formatted, with its line break) into buffer;
 * returns 0, or -1 when there is no such line. */
int zarsim_captured_line(size_t i, char* buffer, size_t size);

/* Discards the captured lines. */
void zarsim_clear_captured(void);

/* Sets the log threshold (overrides ZAR_LOG_LEVEL). */
void zarsim_set_log_level(int level);

/* --- Fixtures (each one change, recorded in the audit log as "fixture") --- */

/* Adds a live controller node (0-7). */
int zarsim_add_node(int node);

/* Adds a target port at "N:S:P" of type PORT_TYPE_FC or PORT_TYPE_ISCSI with
 * operational status PORT_OK; its WWN or iSCSI name follows the position. */
int zarsim_add_port(const char* position, int type);

/* Creates a volume (name up to 31 characters, domain "-" for none, access
 * VOL_MODE_*) and writes its WWN text into wwn (33 bytes) when not NULL. */
int zarsim_add_volume(const char* name, zar_u64 sizeMiB, const char* domain, int access, char* wwn);

/* Logs an initiator (16-hex-digit WWN or iSCSI name) in on a target port;
 * an initiator unknown to the array becomes one of no host. */
int zarsim_login(const char* initiator, const char* position);

/* Logs an initiator out of a target port. */
int zarsim_logout(const char* initiator, const char* position);

/* Creates a host set (name without the "set:" prefix). */
int zarsim_add_hostset(const char* name, const char* domain);

/* Adds host to host set set. */
int zarsim_hostset_add(const char* set, const char* host);

/* Adds an array user with role "browse", "edit" or "super". */
int zarsim_add_user(const char* name, const char* password, const char* role);

/* Enables or disables a user. */
int zarsim_enable_user(const char* name, int enabled);

/* Sets the policy word. */
int zarsim_set_policy(zar_u32 policy);

/* Sets a system setting as "zarcli config set" does (name, host-name,
 * contact, owner, model, serial, policy, ipv4, ipv6; "" clears an
 * address). */
int zarsim_set_config(const char* key, const char* value);

/* Marks a volume busy (a task runs on it) or not. */
int zarsim_set_volume_busy(const char* name, int busy);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* ZARSIM_TEST_H */
