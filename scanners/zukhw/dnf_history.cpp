#include <map>
#include <string>
#include <tuple>

#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/sqlite_file.h"
#include "scanners/zukhw/accounts.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/update_sources.h"

namespace {

constexpr char kPath[] = "var/lib/dnf/history.sqlite";

// Of an update two packages are written down: the new one (6), and the old one that it replaced (7). The
// order of the tables is that of the indexes they have.
constexpr char kQuery[] =
    "SELECT trans_item.trans_id, trans_item.action, trans.dt_end, trans.user_id, "
    "rpm.name, rpm.arch, rpm.epoch, rpm.version, rpm.release "
    "FROM trans_item CROSS JOIN trans ON trans.id = trans_item.trans_id "
    "CROSS JOIN rpm ON rpm.item_id = trans_item.item_id "
    "WHERE trans_item.action IN (6, 7) ORDER BY trans_item.id DESC";
constexpr std::int64_t kReplaced = 7;

using Key = std::tuple<std::int64_t, std::string, std::string>;  // transaction, name, architecture

std::string versionOf(const SqliteRow& row) {
    const std::int64_t epoch = row.number(6).value_or(0);
    const std::string start = epoch == 0 ? "" : std::to_string(epoch) + ':';
    return start + std::string(row.bytes(7)) + '-' + std::string(row.bytes(8));
}

std::string nameOfUser(Machine& machine, std::optional<std::int64_t> userId) {
    for (const Account& user : machine.shared<Accounts>().users()) {
        if (userId && *userId == std::int64_t{user.userId}) return user.name;
    }
    return "";
}

PackageUpdate updateOf(Machine& machine, const SqliteRow& row) {
    PackageUpdate update;
    update.name = row.bytes(4);
    update.architecture = row.bytes(5);
    update.toVersion = versionOf(row);
    const std::int64_t ended = row.number(2).value_or(0);
    if (ended > 0) update.date = utcTime(ended).substr(0, 10);
    update.requester = nameOfUser(machine, row.number(3));
    return update;
}

}  // namespace

std::vector<PackageUpdate> readDnfHistory(Machine& machine, std::size_t enough) {
    const FileDescriptor file = machine.open(kPath);
    if (!file.valid()) return {};
    std::vector<std::pair<Key, PackageUpdate>> found;
    std::map<Key, std::string> replaced;
    const auto take = [&](const SqliteRow& row) {
        machine.deadline().check();
        const Key key{row.number(0).value_or(0), row.bytes(4), row.bytes(5)};
        if (row.number(1) == kReplaced) {
            replaced[key] = versionOf(row);
        } else {
            found.emplace_back(key, updateOf(machine, row));
        }
        return replaced.size() + found.size() < 4 * enough;
    };
    const std::string problem = readSqlite(descriptorPath(file), kQuery, take);
    if (!problem.empty()) machine.sources().malformed(kPath, 0);
    std::vector<PackageUpdate> updates;
    for (auto& [key, update] : found) {
        if (const auto old = replaced.find(key); old != replaced.end()) update.fromVersion = old->second;
        updates.push_back(std::move(update));
    }
    return updates;
}
