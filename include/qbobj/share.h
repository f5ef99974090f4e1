/**
 * @file share.h
 * Shares: the shared folder or block volume, its options for each protocol, and what uses it.
 */
#ifndef QBOBJ_SHARE_H
#define QBOBJ_SHARE_H

#include <qbobj/account.h>
#include <qbobj/share_option.h>
#include <qbobj/share_read.h>
#include <qbobj/share_record.h>
#include <qbobj/share_use.h>
#include <qbobj/share_write.h>

#endif
