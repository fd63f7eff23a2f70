// CommonXFunctions: the lists of the recipient page.
#pragma once

#include "config/services.h"
#include "toolkit/tree_list.h"

namespace tessel::CommonXFunctions {

// Fills the list with the companies that are not inactive; tag class id, "_", object id. An error is traced
// and leaves the list as far as it was filled.
void ListCustomer(Services& services, TreeList& customers);

// Fills the list with the contact persons linked to the company that is selected in `customers`, inactive
// ones left out. Errors as above.
void ListContactPerson(Services& services, const TreeList& customers, TreeList& contacts);

}  // namespace tessel::CommonXFunctions
