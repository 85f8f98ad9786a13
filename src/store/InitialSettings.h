#pragma once

#include "base/Calendar.h"
#include "store/AppSettings.h"
#include "store/ModelContext.h"

#include <memory>

/// The settings of somebody who has chosen none yet.
namespace quorvane::InitialSettings {

/// Defaults that belong to no store: in the desktop's language, or in English where it is none of the supported ones,
/// with work days that are Monday to Friday in this calendar.
[[nodiscard]] std::shared_ptr<AppSettings> make(const Calendar& calendar = Calendar::current());

/// The same for this store, with the idle threshold of an older program's `AppPreference`, rounded up to minutes.
/// Throws `StoreError`.
[[nodiscard]] std::shared_ptr<AppSettings> of(ModelContext& context);

/// Saves these as the store's row if it has none. An older threshold that minutes can't say stays in force without a
/// row, to the second, until settings are saved. Throws `StoreError`.
void ensure(ModelContext& context);

}  // namespace quorvane::InitialSettings
