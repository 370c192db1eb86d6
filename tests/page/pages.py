#!/usr/bin/python3
"""Opens pages in a browser and uses them as people do.

    pages.py RUX SOURCE WORK [AXE]

SOURCE has the examples; AXE is the script of axe-core, without which accessibility is not looked at.
"""
import base64
import pathlib
import re
import shutil
import subprocess
import sys
import time

from browser import browser

rux, source = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
work = pathlib.Path(sys.argv[3])
axe = pathlib.Path(sys.argv[4]) if len(sys.argv) > 4 else None


def make(name, machine, *options):
    page = work / name
    subprocess.run([rux, "page", machine, "-o", page, *options], check=True)
    return page


def search(page, text):
    """What is found for a text."""
    box = page.one("#find")
    page.run("arguments[0].value = ''; document.querySelector('.status').value = ''", box)
    box.send_keys(text)
    page.wait(lambda: page.run("return document.querySelector('.status').value"))
    time.sleep(0.2)  # the last letters
    return page.texts("#found a")


def test_search(page):
    page.open(server)
    found = search(page, "inlet_temp")
    assert found[0] == "INLET_TEMP SENSOR #0x601", found
    assert search(page, "0x601")[0] == "INLET_TEMP SENSOR #0x601"
    # A register, a bus with an operand, a word of a comment.
    assert search(page, "0x4A00") == ["BOARD_REAR_TEMP SENSOR #0x604"]
    assert page.texts("#found mark") == ["operand 0x4A00"]  # by a call, which passes it
    assert search(page, "bus 5, 0x30 operand 2,")[0] == "CPU0_MARGIN SENSOR #0x102"
    assert "CPU0_MARGIN SENSOR #0x102" in search(page, "register 2 on bus 5")
    assert page.texts("#found mark")[0] == "operand 2"
    # No access has it as it is; neither line 74 of a script nor a cell 74 is a register.
    # Two repeaters pass the round, from which actions compute what they access; the first on bus 2.
    both = "MarkWornDrives and ApplyFanDuty compute it"
    for text, others in (("0x4A", both), ("register 0x4A", both),
                         ("what reads register 0x4A on bus 2", "MarkWornDrives computes it")):
        assert search(page, text) == ["BOARD_REAR_TEMP SENSOR #0x604"], text
        assert page.one(".status").text == (
            f"no access has the operand 0x4A, unless {others}; these begin with it: 1 found")
    # The read, before the write of 0x4A01 that sets the chip up.
    assert "operand 0x4A00" in page.texts("#found small")[0]
    # Calls pass 0x25000, and the action adds 0x31.
    assert search(page, "0x25031") == ["DIMM0_A_TEMP SENSOR #0x201"]
    assert search(page, "what reads 0x75888 on bus 2") == ["PSU0_VIN SENSOR #0x401"]
    assert search(page, "0x75899") == []
    assert page.one(".status").text == (
        f"nothing found: no access has the operand 0x75899, unless {both}")
    # By an action that another one calls.
    assert set(search(page, "0x66A03")) == {f"DRIVE{i}_TEMP SENSOR #0x{0x501 + i:X}" for i in range(8)}
    # Words of a name, also longer ones.
    assert search(page, "inlet temp")[0] == "INLET_TEMP SENSOR #0x601"
    assert search(page, "inlet temperature")[0] == "INLET_TEMP SENSOR #0x601"
    # The list goes with a click elsewhere; typing does not scroll.
    assert page.one("#found").is_displayed()
    page.one("h2").click()
    assert not page.one("#found").is_displayed()
    page.run("scrollTo(0, 2000)")
    page.one("#find").send_keys("fan")
    page.wait(lambda: page.one("#found").is_displayed())
    assert page.run("return scrollY") == 2000
    # The module, then what drives the modules.
    found = search(page, "fan 3")
    assert found[:3] == ["FAN3_A SENSOR #0x307", "FAN3_B SENSOR #0x308", "FAN3_PRESENT SENSOR #0x314"], found
    assert {"SET_FAN ACTION", "ApplyFanDuty REPEATER"} <= set(found[3:6]), found
    # A number that the page writes the other way: 141 in READ_VR(0x16000, 0, 141, 1).
    assert "CPU0_CORE_VR_TEMP SENSOR #0x103" in search(page, "0x8D")
    assert "CPU0_CORE_VR_TEMP SENSOR #0x103" in search(page, "read_vr 90112")
    page.one("#find").clear()
    page.one("#find").send_keys("no such thing")
    page.wait(lambda: page.one(".status").text == "nothing found")
    search(page, "FAN_CURVE")
    page.one("#find").send_keys("\ue007")
    page.wait(lambda: page.run("return document.activeElement.textContent") == "FAN_CURVE")


def test_table(page):
    page.open(server)
    names = "#sensors tbody th a"
    assert len(page.texts(names)) == 156
    page.one("#sensors .tools input").send_keys("psu0 vout")
    page.wait(lambda: page.texts(names) == ["PSU0_VOUT"])
    assert page.one("#sensors output").text == "1 of 156 sensors"
    page.open(server)
    columns = [button.text for button in page.all("#sensors .grid thead button")]
    column = columns.index("FH")
    page.all("#sensors .grid thead button")[column].click()
    page.all("#sensors .grid thead button")[column].click()
    limits = [int(row) for row in page.run(
        "return [...document.querySelectorAll('#sensors .grid tbody tr')].map(row => row.cells[arguments[0]].textContent)",
        column) if row]
    assert limits == sorted(limits, reverse=True) and len(limits) > 50
    assert page.all("#sensors .grid thead th")[column].get_attribute("aria-sort") == "descending"
    page.wait(lambda: page.all("#sensors select"))
    page.one("#sensors select option[value='BOARD/CPU_COMPLEX/CPU0']").click()
    page.wait(lambda: len(page.texts(names)) == 12)


def test_buses(page):
    """What is passed to an action that accesses a bus is found where it is accessed."""
    page.open(server)
    box = page.one("#accesses .tools input")
    box.send_keys("bus 2 0x4A")
    page.wait(lambda: len(page.all("#accesses tbody tr")) == 2)
    assert page.texts("#accesses tbody tr:first-child > *") == [
        "bus 2", "0", "0x4A00", "2", "read", "READ_CHIP_TEMP", "BOARD_REAR_TEMP"]
    box.send_keys("FFFF")
    page.wait(lambda: page.one("#accesses output").text == "no accesses match")


def test_actions(page):
    """What the machine does, and the sensors that decide it."""
    page.open(server)
    table = "[aria-label='what the machine does'] tbody"
    chips = ["SENSOR OUTLET_TEMP", "SENSOR BOARD_FRONT_TEMP", "SENSOR BOARD_REAR_TEMP", "SENSOR RISER0_TEMP",
             "SENSOR RISER1_TEMP"]
    assert page.texts(f"{table} th") == [
        "POWER_OFF", "SET_FAN", "SET_ALL_FANS", "MARK_WORN_DRIVE", "SET_LED", "SENSOR VBAT", "SENSOR VBAT", *chips,
        "DEVICE PSU0_OUTPUT", "DEVICE PSU0_OUTPUT", "DEVICE PSU1_OUTPUT", "DEVICE PSU1_OUTPUT", "DEVICE BOARD_FRU"]
    assert page.texts(f"{table} tr:nth-child(-n+2) td") == [
        "GROUP COOLING VALUE_EXIT G_OVERHEAT ? POWER_OFF(1)",
        "CPU0_TEMP, CPU1_TEMP (degrees C): G_OVERHEAT = G_CPU_HOTTEST >= 110 ? 1 : 0",
        "DEVICE MAIN_POWER VALUE_OFF POWER_OFF(2)", "nothing measured"]
    # It reads the wear that decides, and bits that it keeps; SET_LED only such bits.
    assert page.texts(f"{table} tr:nth-child(10) td") == [
        "REPEATER MarkWornDrives 8 × MARK_WORN_DRIVE(ARG0)", "what it reads itself"]
    assert page.texts(f"{table} tr:nth-child(11) td") == ["GROUP BOARD VALUE_INIT SET_LED(0, 1)", "nothing measured"]
    # The same from the sensor's side; what it decides without a number is named alone.
    cards = page.run("return [...document.querySelectorAll('article > p')].map(p => p.textContent)")
    assert "decides POWER_OFF (G_OVERHEAT = G_CPU_HOTTEST >= 110 ? 1 : 0), SET_FAN" in cards
    assert ("run by GROUP COOLING VALUE_EXIT G_OVERHEAT ? POWER_OFF(1) decided by CPU0_TEMP, CPU1_TEMP (degrees C): "
            "G_OVERHEAT = G_CPU_HOTTEST >= 110 ? 1 : 0") in cards
    # A fan's sensor only reads the fan. Its groups also run POWER_OFF, which is not named like it.
    drivers = [card for card in cards if card.startswith("likely driven by")]
    assert set(drivers) == {
        "likely driven by SET_FAN run by ApplyFanDuty decided by CPU0_TEMP, CPU1_TEMP, FANS_FAILED, INLET_TEMP "
        "(both are called FAN, and the group COOLING runs it)"}
    assert len(drivers) == 19  # two rotors and a bit for each of six, the duty; not the decider FANS_FAILED


def test_tests(page):
    """What is not covered is filtered by, and linked from the tests and to them."""
    page.open(tested)
    names = "#sensors tbody th a"
    page.wait(lambda: page.all("#sensors select[aria-label='tests of sensors']"))
    page.one("#sensors select[aria-label='tests of sensors'] option[value='not covered']").click()
    page.wait(lambda: 0 < len(page.texts(names)) < 156)
    # A case reads the register of the one; of the other, cases state the reading.
    assert "LEAK_DETECTED" not in page.texts(names) and "CPU0_TEMP" in page.texts(names)
    assert page.run("""
        const cards = [...document.querySelectorAll('article')].filter(card => card.querySelector('em.w a[href="#tests"]'));
        fill(document.querySelector('#tests details'));
        const linked = new Set([...document.querySelectorAll('#tests a')].map(link => link.hash));
        return cards.length > 0 && linked.size === cards.length && cards.every(card => linked.has('#' + card.id));""")


def test_links_both_ways(page):
    """Every link leads somewhere, and what refers to a thing is referred to from there."""
    page.open(tested)
    find_lost = """return [...document.querySelectorAll('a[href^="#"]')].map(link => link.hash.slice(1))
        .filter(id => !document.getElementById(id))"""
    assert page.run(find_lost) == []
    page.open(server)
    assert page.run(find_lost) == []
    missing = page.run("""
        const linked = (article, title) => [...article.querySelectorAll(':scope > p')]
          .filter(p => p.firstChild.textContent === title).flatMap(p => [...p.querySelectorAll('a')].map(a => a.hash));
        const missing = [];
        for (const article of document.querySelectorAll('article'))
          for (const [there, back] of [['refers to', 'referred to by'], ['referred to by', 'refers to']])
            for (const hash of linked(article, there))
              if (!linked(document.querySelector(hash), back).includes('#' + article.id)) missing.push(article.id + hash);
        return missing;""")
    assert missing == [], missing
    assert page.run("return document.querySelectorAll('article').length") > 200


def test_keyboard(page):
    page.open(server)
    page.one("body").send_keys("/")
    page.run("document.activeElement.value = ''")
    page.run("return document.activeElement").send_keys("cpu0_vcore")
    page.wait(lambda: page.all("#found a"))
    page.run("return document.activeElement").send_keys("\ue015")
    assert page.run("return document.activeElement.textContent").startswith("CPU0_VCORE")
    page.run("return document.activeElement").send_keys("\ue00c")
    assert page.run("return document.activeElement.id") == "find" and not page.one("#found").is_displayed()


def test_stays_inside(page):
    """No request but for the page itself, nothing that the policy forbids, no error."""
    for each in (server, changed, hostile, index):
        page.open(each)
        page.wait(lambda: page.run("return document.readyState") == "complete")
        assert page.requests() == [each.resolve().as_uri()], page.requests()
        assert page.complaints() == [], page.complaints()
        assert page.run("return document.documentElement.scrollWidth <= innerWidth")
    # The policy holds: what is added later neither runs nor loads.
    page.open(server)
    page.run("""document.body.append(Object.assign(document.createElement('script'), {textContent: 'window.ran = 1'}),
        Object.assign(document.createElement('img'), {src: 'file:///etc/hostname'}))""")
    assert page.run("return window.ran") is None
    assert any("Content Security Policy" in text for text in page.complaints())


def test_hostile_texts(page):
    page.open(hostile)
    assert page.run("return document.title") == "</title><script>alert(1)</script>"
    assert "<img src=x onerror=alert(1)>&amp;" in page.texts("#sensors tbody th a")
    assert page.run("return document.images.length + document.querySelectorAll('[onerror],[style]').length") == 0
    search(page, "onerror")
    assert page.texts("#found a")[0].startswith("<img src=x onerror=alert(1)>&amp;")
    assert page.run("return document.images.length") == 0
    page.one("#sensors .tools input").send_keys("<img")
    page.wait(lambda: len(page.all("#sensors .grid tbody tr")) == 1)
    assert page.run("return document.images.length") == 0


def test_changes(page):
    page.open(changed)
    assert "CPU0_TEMP" in page.one("#changes").text and "95" in page.one("#changes ins").text
    card = page.run("return document.getElementById(document.querySelector('#changes a').hash.slice(1))")
    assert "changed" in card.text and "100" in card.text


def test_index(page):
    page.open(index)
    assert page.texts("#overview tbody th a") == ["Two-socket rack server, 2U, 8 drive bays", "First board"]
    page.one("#things .tools input").send_keys("0x601")
    page.wait(lambda: page.texts("#things tbody th a") == ["INLET_TEMP"])
    page.one("#things tbody th a").click()
    page.wait(lambda: page.run("return document.activeElement.textContent") == "INLET_TEMP")
    assert page.run("return location.pathname").endswith("/server.html")
    page.one("nav a").click()
    page.wait(lambda: page.all("#things"))


def test_large(page):
    """Of a large machine, what is searched for is shown, and where a link leads."""
    page.open(large)
    assert page.one("#sensors output").text == "1500 sensors, the first 500 are shown"
    page.one("#sensors .tools input").send_keys("S1234")
    page.wait(lambda: page.texts("#sensors tbody th a") == ["S1234"])
    assert "S1234" not in page.texts("article h4 a")
    page.one("#sensors tbody th a").click()
    page.wait(lambda: page.run("return document.activeElement.textContent") == "S1234")
    page.run("location.hash = ''")
    assert search(page, "s777") == ["S777 SENSOR #0x1309"]
    page.open(large, page.run("return document.querySelector('#found a').hash"))
    page.wait(lambda: page.run("return document.activeElement.textContent") == "S777")


def test_without_scripts():
    with browser(scripts=False) as page:
        page.open(server)
        text = page.one("main").text
        for expected in ("INLET_TEMP", "BOARD/CPU_COMPLEX/CPU0", "READ_CHIP_TEMP", "FAN_CURVE", "0x40030000"):
            assert expected in text, expected
        assert not page.all("#find")
        page.open(large)
        assert len(page.all("#sensors .grid tbody tr")) >= 1500
        assert "S1234" in page.one("#sensors").text


def test_print(page):
    """On sheets of A4, as the style asks for."""
    page.open(server)
    printed = page.driver.execute_cdp_cmd("Page.printToPDF", {"preferCSSPageSize": True, "printBackground": True})
    width, height = re.search(rb"/MediaBox \[0 0 ([\d.]+) ([\d.]+)\]", base64.b64decode(printed["data"])).groups()
    assert (round(float(width)), round(float(height))) == (595, 842), (width, height)


def test_accessibility(**options):
    with browser(**options) as page:
        for each in (first, hostile, index, tested):
            page.open(each)
            page.run(axe.read_text())
            found = page.driver.execute_async_script("""
                const done = arguments[0];
                axe.run().then(({violations}) => done(violations.map(each => each.id + ': ' + each.nodes[0].html)));""")
            assert found == [], (each, found)


def write_large(path):
    """More than a page shows at once."""
    text = (source / "tests/tool/boards/small.rux").read_text()
    numbers = range(3, 1500)
    text = text.replace("0x201\n", "0x201, " + ", ".join(str(4096 + number) for number in numbers) + "\n", 1)
    for number in numbers:
        text += (f"\n[SENSOR]\nPARENT = FANS\nNAME = S{number}\nID = {4096 + number}\nTYPE = 1\nINITFLAG = 3\n"
                 "CONTROLMASK = 0\nVALUE = VT_CONST, G_CPU\n")
    path.write_text(text)
    return path


def write_hostile(path):
    text = (source / "tests/tool/boards/small.rux").read_text()
    text = text.replace("INLET", '"<img src=x onerror=alert(1)>&amp;"')
    text = text.replace('"Small, 1U"', '"</title><script>alert(1)</script>"').replace("FAN1", "a\x01]b\x1b[31m")
    path.write_text(text)
    return path


def write_changed(folder):
    shutil.copytree(source / "examples/server", folder)
    cpu = folder / "cpu.rux"
    cpu.write_text(cpu.read_text().replace("= 100", "= 95"))
    return folder / "server.rux"


shutil.rmtree(work, ignore_errors=True)
work.mkdir(parents=True)
server = make("server.html", source / "examples/server/server.rux")
first = make("first.html", source / "examples/first/first.rux")
tested = make("tested.html", source / "examples/server/server.rux", "--tests", source / "examples/server/server.tests.json",
              "--profile", source / "examples/server/profile.json")
hostile = make("hostile.html", write_hostile(work / "hostile.rux"))
large = make("large.html", write_large(work / "large.rux"))
changed = make("changed.html", write_changed(work / "changed"), "--diff", source / "examples/server/server.rux")
(work / "machines").mkdir()
shutil.copytree(source / "examples/server", work / "machines/server")
shutil.copy(source / "examples/first/first.rux", work / "machines")
subprocess.run([rux, "page", "--output-dir", "out", "machines/server/server.rux", "machines/first.rux"],
               cwd=work, check=True)
index = work / "out/index.html"

with browser() as shared:
    for test in (test_search, test_table, test_buses, test_actions, test_tests, test_links_both_ways, test_keyboard, test_stays_inside, test_hostile_texts,
                 test_changes, test_index, test_large, test_print):
        test(shared)
        print(test.__name__)
test_without_scripts()
print("test_without_scripts")
if axe is None or not axe.exists():
    print("without axe-core, accessibility is not looked at: scripts/page-tools installs it")
else:
    test_accessibility()
    test_accessibility(dark=True, width=400)
    print("test_accessibility")
