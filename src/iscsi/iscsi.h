// Workers of the operations on iSCSI targets.
#pragma once

#include "core/call.h"

#include <qbobj/iscsi.h>

namespace qbobj
{

int x_qbobj_getLunGroupAccessList(Call &call, const char *LunGroup, char **Initiators, unsigned int *Entries);
int x_qbobj_addLunGroupAccessList(Call &call, const char *LunGroup, const char *Initiator);
int x_qbobj_deleteLunGroupAccessList(Call &call, const char *LunGroup);
int x_qbobj_deleteIniFromLunGroupAccessList(Call &call, const char *Initiator);

int x_qbobj_getLunGroupCollection(Call &call, qbobj_LunGroupCollection_t *collection);
int x_qbobj_getLunGroup(Call &call, qbobj_LunGroup_t *LunGroup);
int x_qbobj_addLunGroup(Call &call, qbobj_LunGroup_t *LunGroup);
int x_qbobj_modifyLunGroup(Call &call, qbobj_LunGroup_t *LunGroup);
int x_qbobj_deleteLunGroup(Call &call, const char *LunGroupName);

int x_qbobj_getInitiatorCollection(Call &call, qbobj_InitiatorCollection_t *collection);
int x_qbobj_getInitiator(Call &call, qbobj_Initiator_t *Initiator);
int x_qbobj_addInitiator(Call &call, qbobj_Initiator_t *Initiator);
int x_qbobj_modifyInitiator(Call &call, qbobj_Initiator_t *Initiator);
int x_qbobj_deleteInitiator(Call &call, const char *Name);

int x_qbobj_getLun(Call &call, qbobj_Lun_t *Lun);
int x_qbobj_addLun(Call &call, qbobj_Lun_t *Lun);
int x_qbobj_deleteLun(Call &call, const char *Name);

// The id; -1 for an unknown name, -2 for one that the object cannot have. They fill no error record.
int x_qbobj_getLunId(Call &call, const char *lun_name);
int x_qbobj_getLunGroupId(Call &call, const char *lun_group_name);
int x_qbobj_getInitiatorId(Call &call, const char *initiator_name);

} // namespace qbobj
