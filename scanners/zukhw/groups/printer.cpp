// Group "Printer": one instance per queue of the print server and per USB printer that no queue is for, by
// name. Read from the server's own files; for users who may not read them the server is asked, if it runs.
#include <algorithm>
#include <chrono>
#include <optional>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/cups_config.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/ipp.h"
#include "scanners/zukhw/local_http.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/usb_devices.h"

namespace {

constexpr char kQueues[] = "etc/cups/printers.conf";
constexpr char kClasses[] = "etc/cups/classes.conf";
constexpr char kPrinterClass[] = "07";

struct Printer {
    std::string name;
    const PrintQueue* queue = nullptr;  // or
    const UsbDevice* usb = nullptr;
};

std::string schemeOf(const std::string& uri) {
    return uri.substr(0, uri.find(':'));
}

const char* connectionOf(const PrintQueue& queue) {
    if (queue.isClass) return "Class";
    const std::string scheme = schemeOf(queue.deviceUri);
    if (scheme == "usb" || startsWith(queue.deviceUri, "hp:/usb/")) return "USB";
    if (scheme == "parallel" || startsWith(queue.deviceUri, "hp:/par/")) return "Parallel";
    if (scheme == "serial") return "Serial";
    if (scheme == "file") return "File";
    static constexpr const char* kNetwork[] = {"ipp", "ipps", "http",  "https", "socket",
                                               "lpd", "smb",  "dnssd", "hp",    "beh"};
    const bool isNetwork = std::find(std::begin(kNetwork), std::end(kNetwork), scheme) != std::end(kNetwork);
    return isNetwork ? "Network" : "";
}

// The host of "socket://printer.example:9100"; of no other form.
std::string serverOf(const std::string& uri) {
    const std::size_t mark = uri.find("://");
    if (mark == std::string::npos || schemeOf(uri) == "usb" || schemeOf(uri) == "dnssd") return "";
    std::string host = uri.substr(mark + 3, uri.find_first_of("/?#", mark + 3) - mark - 3);
    host = host.substr(host.rfind('@') + 1);
    if (startsWith(host, "[")) return host.substr(1, host.find(']') - 1);
    return host.substr(0, host.find(':'));
}

// The value of "*Key: value" in a printer description, without its quotation marks.
std::string described(const std::string& description, const char* key) {
    std::string value(findValue(description, key, ':').value_or(""));
    value.erase(std::remove(value.begin(), value.end(), '"'), value.end());
    return value;
}

std::optional<bool> yesOrNo(const std::string& text) {
    if (text != "Yes" && text != "No") return std::nullopt;
    return text == "Yes";
}

void writeAbilities(const std::string& description, GroupWriter& out) {
    out.text("Resolution", described(description, "*DefaultResolution"));
    const std::string color = described(description, "*ColorDevice");
    if (!color.empty()) out.boolean("Color", color == "True");
    const std::string duplex = described(description, "*DefaultDuplex");
    if (!duplex.empty()) out.boolean("Duplex", duplex != "None");
}

void writeQueue(Machine& machine, const PrintQueue& queue, GroupWriter& out) {
    // Names of queues have no slash; one in the file would lead out of the folder.
    const bool hasDescription = !queue.isClass && queue.name.find('/') == std::string::npos;
    std::string description;
    if (hasDescription) {
        description = machine.read("etc/cups/ppd/" + queue.name + ".ppd", Machine::kTable).value_or("");
    }
    const std::string nickName = described(description, "*NickName");
    out.text("Description", queue.info);
    out.text("Location", queue.location);
    out.text("DeviceUri", withoutPassword(queue.deviceUri));
    out.text("Connection", connectionOf(queue));
    out.text("Driver", queue.makeModel.empty() ? nickName : queue.makeModel);
    out.text("Manufacturer", described(description, "*Manufacturer"));
    out.text("Model", described(description, "*ModelName"));
    out.boolean("Default", queue.isDefault);
    out.boolean("Shared", yesOrNo(queue.shared));
    out.text("State", queue.state);
    out.boolean("AcceptingJobs", yesOrNo(queue.accepting));
    out.list("Members", queue.members);
    writeAbilities(description, out);
    out.text("Server", serverOf(queue.deviceUri));
}

// Without the queues one cannot say that none is for this printer.
void writeUsb(Machine& machine, const UsbDevice& device, bool queuesKnown, GroupWriter& out) {
    out.text("Connection", "USB");
    const std::string vendor = machine.shared<DeviceNames>().usbVendor(device.vendor);
    out.hardware("Manufacturer", device.makerText.empty() ? vendor : device.makerText);
    out.hardware("Model", device.productText);
    if (queuesKnown) out.text("State", "NotConfigured");
    out.text("VendorId", device.vendor);
    out.text("ProductId", device.product);
    out.hardware("SerialNumber", device.serialText);
}

bool isPrinter(const UsbDevice& device) {
    return std::any_of(device.interfaces.begin(), device.interfaces.end(), [](const UsbInterface& interface) {
        return interface.interfaceClass() == kPrinterClass;
    });
}

// Addresses tell the serial number, or else the product with its blanks written as "%20".
bool isFor(const PrintQueue& queue, const UsbDevice& device) {
    if (std::string_view(connectionOf(queue)) != "USB") return false;
    if (!device.serialText.empty() && queue.deviceUri.find(device.serialText) != std::string::npos)
        return true;
    std::string product;
    for (const char c : device.productText) product += c == ' ' ? std::string("%20") : std::string(1, c);
    return device.serialText.empty() && !product.empty() &&
           queue.deviceUri.find(product) != std::string::npos;
}

// A server that waits to be called would be started by a question.
bool serverRuns(Machine& machine) {
    const std::vector<std::string> processes = machine.list("proc");
    return std::any_of(processes.begin(), processes.end(), [&](const std::string& process) {
        return parseDecimal(process) && machine.text("proc/" + process + "/comm") == "cupsd";
    });
}

// The queues as the server tells them; no value when it does not.
std::optional<std::vector<PrintQueue>> askServer(Machine& machine) {
    constexpr std::chrono::milliseconds kLimit(500);  // a quarter of what the group may take
    const std::string socket = "run/cups/cups.sock";
    if (!machine.live() || !machine.exists(socket) || !serverRuns(machine)) return std::nullopt;
    const auto answer = postLocally('/' + socket, "application/ipp", ippQueuesRequest(), kLimit);
    return answer ? std::optional(parseIppQueues(*answer)) : std::nullopt;
}

// The queues, then the classes of queues.
std::vector<PrintQueue> readQueues(Machine& machine, bool* known) {
    std::vector<PrintQueue> queues;
    for (const char* path : {kQueues, kClasses}) {
        const auto text = machine.read(path, Machine::kTable);
        if (!text && machine.exists(path)) *known = false;
        for (PrintQueue& queue : parseCupsConfig(text.value_or(""))) queues.push_back(std::move(queue));
    }
    if (*known) return queues;
    auto told = askServer(machine);
    *known = told.has_value();
    return told ? std::move(*told) : queues;
}

}  // namespace

void collectPrinter(Machine& machine, GroupWriter& out) {
    bool queuesKnown = true;
    const std::vector<PrintQueue> queues = readQueues(machine, &queuesKnown);
    std::vector<Printer> printers;
    printers.reserve(queues.size());
    for (const PrintQueue& queue : queues) printers.push_back({queue.name, &queue, nullptr});
    for (const UsbDevice& device : machine.shared<UsbDevices>().all()) {
        const auto serves = [&](const PrintQueue& queue) { return isFor(queue, device); };
        if (!isPrinter(device) || std::any_of(queues.begin(), queues.end(), serves)) continue;
        printers.push_back({device.productText.empty() ? device.name : device.productText, nullptr, &device});
    }
    std::stable_sort(printers.begin(), printers.end(),
                     [](const Printer& a, const Printer& b) { return naturalLess(a.name, b.name); });
    for (const Printer& printer : printers) {
        out.beginInstance();
        out.text("Name", printer.name);
        if (printer.queue != nullptr) writeQueue(machine, *printer.queue, out);
        if (printer.usb != nullptr) writeUsb(machine, *printer.usb, queuesKnown, out);
    }
}
