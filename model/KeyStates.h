#pragma once

#include <functional>
#include <memory>

#include "core/IniDocument.h"
#include "model/KeyStore.h"

namespace tamarind {

// Reads every record's current value and state from the settings file and drops what was pending.
// `advance` is called before each record.
void DeriveKeyStates(KeyStore& store, std::shared_ptr<const IniDocument> settings,
                     const std::function<void()>& advance);

}  // namespace tamarind
