/*
 * zarauth.h - password check of the array's users for the CIM server.
 *
 * Users, their roles and their salted password hashes live in the array's
 * configuration (see zarcli users).  These calls open the array library on
 * demand and are thread-safe; they do not use the library's semaphore, so
 * a slow password check never holds up other callers.
 */
#ifndef ZARAUTH_H
#define ZARAUTH_H

#ifdef __cplusplus
extern "C" {
#endif

/* Returns 0 when user exists, is enabled and password matches its stored
 * hash; non-zero otherwise, without saying which of these failed. */
int zar_authenticateUser(const char* user, const char* password);

/* Roles of array users, lowest first. */
#define ZAR_ROLE_NONE 0
#define ZAR_ROLE_BROWSE 1
#define ZAR_ROLE_EDIT 2
#define ZAR_ROLE_SUPER 3

/* The role of an enabled user (ZAR_ROLE_*); ZAR_ROLE_NONE for an unknown
 * or disabled user or when the array cannot be read. */
int zar_userRole(const char* user);

/* Records a failed login of user from address (a client address, NULL or
 * "" when unknown) in the array's audit log, as a refused "login" event.
 * Control characters in either are stored escaped.  Returns 0 when the
 * event was written. */
int zar_recordFailedLogin(const char* user, const char* address);

/*
 * A value that changes whenever the array's users change (one added or
 * removed, enabled or disabled, a new password or role), whichever process
 * made the change. Cheap when nothing changed: a server may ask on every
 * request to know whether credentials it verified earlier still hold.
 * Returns 0 and sets *generation; on an error of the array it still sets a
 * value that differs from every earlier one.
 */
int zar_usersGeneration(unsigned long long* generation);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* ZARAUTH_H */
