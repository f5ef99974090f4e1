// The workers of volumes, disks, enclosures and health readings.
#pragma once

#include "core/call.h"

#include <qbobj/disk.h>
#include <qbobj/health.h>

namespace qbobj
{

/* ---- Volumes and disks --------------------------------------------------------------------------------- */

int x_qbobj_getVolumeCollection(Call &call, qbobj_VolumeCollection_t *collection);
int x_qbobj_updateVolume(Call &call, qbobj_Volume_t *volume);
int x_qbobj_deleteVolume(Call &call, const char *VolumeId);
int x_qbobj_getDiskCollection(Call &call, qbobj_DiskCollection_t *collection);
int x_qbobj_getDiskCollectionForController(Call &call, qbobj_DiskCollection_t *collection, int controller);
int x_qbobj_getDiskEnclosureCollection(Call &call, qbobj_DiskEnclosureCollection_t *collection);
int x_qbobj_getDiskEnclosurePort(Call &call, int DiskEnclosureId, char **DiskEnclosrePort);
int x_qbobj_getDiskByDevname(Call &call, qbobj_Disk_t *slot);
int x_qbobj_setDiskSpare(Call &call, const char *devname, int flag);
int x_qbobj_getDiskDiff(Call &call, qbobj_DiskDiff_t **diff);
int x_qbobj_getDiskByDiskDiff(Call &call, qbobj_DiskDiff_t *diff, qbobj_Disk_t *disk);
int x_qbobj_deleteDiskByDevname(Call &call, qbobj_Disk_t *disk);

/* ---- Health -------------------------------------------------------------------------------------------- */

int x_qbobj_getDiskHealthCollection(Call &call, qbobj_DiskHealthCollection_t *collection);
int x_qbobj_setDiskHealth(Call &call, qbobj_DiskHealth_t *health);
int x_qbobj_getEnclosureHealth(Call &call, qbobj_EnclosureHealth_t *enc_health);
int x_qbobj_getEnclosureHealthCollection(Call &call, qbobj_EnclosureHealthCollection_t *collection);
int x_qbobj_setEnclosureHealth(Call &call, qbobj_EnclosureHealth_t *enc_health);
int x_qbobj_setEnclosureHealthForTest(Call &call, const char *path);
int x_qbobj_getUpsHealthCollection(Call &call, qbobj_UpsHealthCollection_t *collection);
int x_qbobj_setUpsHealth(Call &call, qbobj_UpsHealth_t *ups_health);

} // namespace qbobj
