#include "catalogue/amplifier_store.h"

#include <algorithm>

namespace qm {

std::string duplicateDeviceText(const std::string& deviceName)
{
    return "Device Name '" + deviceName + "' is already in the catalogue.";
}

std::vector<AmplifierRecord>::iterator MemoryStore::findDevice(const std::string& deviceName)
{
    const std::string key = lowerCase(deviceName);
    return std::find_if(rows_.begin(), rows_.end(), [&](const AmplifierRecord& r) {
        return lowerCase(r[field::DeviceName]) == key;
    });
}

void MemoryStore::add(const AmplifierRecord& record)
{
    if (findDevice(record[field::DeviceName]) != rows_.end())
        throw StoreError(duplicateDeviceText(record[field::DeviceName]));
    rows_.push_back(record);
}

void MemoryStore::update(const std::string& deviceName, const AmplifierRecord& record)
{
    auto it = findDevice(deviceName);
    if (it == rows_.end()) throw StoreError("Device '" + deviceName + "' is not in the catalogue.");
    auto other = findDevice(record[field::DeviceName]);
    if (other != rows_.end() && other != it)
        throw StoreError(duplicateDeviceText(record[field::DeviceName]));
    *it = record;
}

void MemoryStore::remove(const std::string& deviceName)
{
    auto it = findDevice(deviceName);
    if (it == rows_.end()) throw StoreError("Device '" + deviceName + "' is not in the catalogue.");
    rows_.erase(it);
}

void MemoryStore::addAll(const std::vector<AmplifierRecord>& records)
{
    std::vector<AmplifierRecord> kept = rows_;
    try {
        for (const AmplifierRecord& r : records)
            add(r);
    } catch (const StoreError&) {
        rows_ = std::move(kept);
        throw;
    }
}

} // namespace qm
