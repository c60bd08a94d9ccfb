"""Who is answered, by address: in a network of the test's own, with addresses of the internet."""

import subprocess
import unittest

from house import House, curl, namespaces_are_allowed

SWITCH = "/index.html?A~1~LivingRoomCeilingLight~turnon~LivingRoom"
PRIVATE = ["127.0.0.1", "::1", "10.1.2.3", "172.16.0.1", "172.31.255.254", "192.168.7.5",
           "169.254.1.1", "fd00::5", "fc00::5"]
PUBLIC = ["203.0.113.5", "11.0.0.1", "172.15.0.1", "172.32.0.1", "192.169.0.1", "169.253.0.1",
          "100.64.0.1", "2001:db8::5", "2001:db8::7f00:1", "fe00::5"]
ON_LINK = ["203.0.113.129/25", "203.0.113.130/25", "2001:db8:7::1/64 nodad",
           "2001:db8:7::2/64 nodad"]


def setUpModule():
  global INSIDE
  addresses = [f"ip address add {address}/{'128 nodad' if ':' in address else '32'} dev lo"
               for address in PRIVATE[2:] + PUBLIC]
  # A network that the house is on, where the kernel has interfaces of this kind.
  link = ["ip link add house type veth peer garden", "ip link set house up", "ip link set garden up",
          *(f"ip address add {address} dev house" for address in ON_LINK)]
  addresses.append("{ " + " && ".join(link) + " || true; } 2>/dev/null")
  script = " && ".join(["ip link set lo up", *addresses, "echo ready", "exec cat"])
  if not namespaces_are_allowed("--net"):
    raise unittest.SkipTest("the system forbids it: a network of the test's own")
  network = subprocess.Popen(["unshare", "--map-root-user", "--net", "sh", "-c", script],
                             stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT)
  unittest.addModuleCleanup(network.communicate, timeout=30)
  first = network.stdout.readline()
  if first != b"ready\n":
    raise AssertionError("These tests need a network namespace with addresses of IPv4 and IPv6, "
                         "which this system does not give: " + first.decode())
  INSIDE = ["nsenter", "--preserve-credentials", "-U", "-n", "-t", str(network.pid)]


class NetworkTest(unittest.TestCase):

  def open_house(self, **kind):
    house = House(inside=INSIDE, **kind)
    self.addCleanup(house.close)

    def ask(address, path, *options):
      host = "[::1]" if ":" in address else "127.0.0.1"
      return curl(house, path, "--interface", address, *options, host=host)

    return house, ask

  def test_without_a_password_its_own_network_alone_is_answered(self):
    house, ask = self.open_house()
    claims = ("-H", "X-Forwarded-For: 127.0.0.1", "-H", "Forwarded: for=127.0.0.1",
              "-H", "Host: localhost", "-u", "anna:secret")
    for address in PRIVATE:
      self.assertEqual(ask(address, "/").status, 200, address)
    for address in PUBLIC:
      for path in ("/", SWITCH, "/bulbon.gif", "/missing"):
        for options in ((), claims):
          answer = ask(address, path, *options)
          self.assertEqual(answer.status, 403, address)
          self.assertRegex(answer.body, rb"\AWithout a password only [^\n]+\n\Z")
    self.assertEqual(house.switched(), [])
    # Who is seen with the very address that was called sits at this machine.
    for address, host in (("203.0.113.5", "203.0.113.5"), ("2001:db8::5", "[2001:db8::5]")):
      self.assertEqual(curl(house, "/", "--interface", address, host=host).status, 200, host)

  def test_with_a_password_everybody_who_knows_it_is_answered(self):
    _, ask = self.open_house(passwords=b"anna:secret\r\n")
    for address in PRIVATE[::4] + PUBLIC:
      self.assertEqual(ask(address, "/").status, 401, address)
      self.assertEqual(ask(address, "/", "-u", "anna:secret").status, 200, address)

  def test_without_a_password_neighbours_are_at_home_too(self):
    links = subprocess.run([*INSIDE, "ip", "-o", "link"], stdout=subprocess.PIPE, check=True)
    if b"house" not in links.stdout:
      self.skipTest("the system forbids it: a network interface of the test's own")
    house, ask = self.open_house(webshared="1")
    for address in ("203.0.113.130", "2001:db8:7::2", "100.64.0.1"):
      self.assertEqual(ask(address, "/").status, 200, address)
    for address in ("203.0.113.5", "2001:db8::5"):
      self.assertEqual(ask(address, "/").status, 403, address)
