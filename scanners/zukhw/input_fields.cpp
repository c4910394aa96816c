#include "scanners/zukhw/input_fields.h"

#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/input_devices.h"
#include "scanners/zukhw/machine.h"

void writeInputDevice(Machine& machine, const InputDevice& device, GroupWriter& out) {
    out.text("Name", device.name);
    // On these buses makers have the numbers that they have on USB.
    const bool hasUsbNumbers = device.bus == "USB" || device.bus == "I2C";
    if (hasUsbNumbers) out.text("Vendor", machine.shared<DeviceNames>().usbVendor(device.vendor));
    out.text("VendorId", device.vendor);
    out.text("ProductId", device.product);
    out.text("VersionId", device.version);
    out.text("Bus", device.bus);
    out.hardware("SerialNumber", device.serial);
    out.text("PhysicalPath", device.physicalPath);
    out.text("Driver", nearestDriver(machine, machine.resolve(device.path)));
}
