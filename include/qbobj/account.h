/**
 * @file account.h
 * Accounts: users, groups, passwords and the defaults of new accounts, and the directory service that
 * accounts may come from.
 */
#ifndef QBOBJ_ACCOUNT_H
#define QBOBJ_ACCOUNT_H

#include <qbobj/group.h>
#include <qbobj/password.h>
#include <qbobj/security.h>
#include <qbobj/user.h>

#endif
