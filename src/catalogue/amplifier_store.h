#pragma once
// Where the amplifier catalogue is kept. The core declares what it needs; a
// database adapter outside the core keeps the rows on disk, MemoryStore keeps
// them for one run.
#include "catalogue/amplifier_fields.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace qm {

/// A change the store refused, with the reason in words a designer reads.
class StoreError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

class AmplifierStore
{
  public:
    virtual ~AmplifierStore() = default;

    /// Every record, in the order they were stored.
    virtual std::vector<AmplifierRecord> list() const = 0;
    /// Stores a new record; throws StoreError when its device name is taken
    /// or the store can't be written.
    virtual void add(const AmplifierRecord& record) = 0;
    /// Replaces the record of `deviceName` (which may change its name);
    /// throws StoreError when there is none or the new name is taken.
    virtual void update(const std::string& deviceName, const AmplifierRecord& record) = 0;
    /// Removes the record of `deviceName`; throws StoreError when there is none.
    virtual void remove(const std::string& deviceName) = 0;
    /// Adds many records at once, all or none.
    virtual void addAll(const std::vector<AmplifierRecord>& records) = 0;

    /// False when the catalogue could not be opened for writing.
    virtual bool writable() const = 0;
    /// Why the catalogue is read-only; empty when it is not.
    virtual std::string problem() const = 0;
};

/// A catalogue that lives as long as the run.
class MemoryStore : public AmplifierStore
{
  public:
    std::vector<AmplifierRecord> list() const override { return rows_; }
    void add(const AmplifierRecord& record) override;
    void update(const std::string& deviceName, const AmplifierRecord& record) override;
    void remove(const std::string& deviceName) override;
    void addAll(const std::vector<AmplifierRecord>& records) override;
    bool writable() const override { return true; }
    std::string problem() const override { return {}; }

  private:
    std::vector<AmplifierRecord>::iterator findDevice(const std::string& deviceName);
    std::vector<AmplifierRecord> rows_;
};

/// The message of a device name that is already in the catalogue.
std::string duplicateDeviceText(const std::string& deviceName);

} // namespace qm
