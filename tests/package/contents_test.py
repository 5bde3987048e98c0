"""What is in the package."""
import gzip
import io
import os
import pathlib
import re
import subprocess
import xml.etree.ElementTree as ElementTree

import debian_package
import pytest
from debian_package import DESKTOP_ENTRY, ID, NAME
from PIL import Image

ROOT = pathlib.Path(__file__).resolve().parents[2]
LANGUAGES = {"de": "de_DE", "es": "es_ES", "fr": "fr_FR", "ja": "ja_JP", "zh_CN": "zh_CN"}
TABLES = "etc/vexaagent/i18n/configui"
ICON = "usr/share/pixmaps/agent_48.png"
MANUAL = f"usr/share/man/man1/{NAME}.1.gz"
METAINFO = f"usr/share/metainfo/{ID}.metainfo.xml"
XML_LANG = "{http://www.w3.org/XML/1998/namespace}lang"

PROGRAM = {f"usr/bin/{NAME}"}
DATA = {
    ICON, MANUAL, METAINFO, DESKTOP_ENTRY,
    f"usr/share/icons/hicolor/scalable/apps/{NAME}.svg",
    f"usr/share/doc/{NAME}/changelog.gz",
    f"usr/share/doc/{NAME}/copyright",
}
TEXTS = {f"{TABLES}/en_US.prop"} | {f"{TABLES}/{locale}{charset}.prop"
                                    for locale in LANGUAGES.values() for charset in ("", ".UTF-8")}
# The other spellings of UTF-8 in a locale's name.
LINKS = {f"{TABLES}/{locale}.{charset}.prop": f"{locale}.UTF-8.prop"
         for locale in LANGUAGES.values() for charset in ("UTF8", "utf8", "utf-8")}


def finds_nothing(*command, **options):
    """Runs a checker, which must be content and have nothing to say."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    assert (result.returncode, result.stdout.decode()) == (0, "")


@pytest.fixture(scope="module")
def unpacked(tmp_path_factory):
    directory = tmp_path_factory.mktemp("package")
    debian_package.ask("extract", directory)
    return directory


def test_installs_these_files_and_no_others():
    files = debian_package.files().values()
    modes = {f.name.removeprefix("./"): f.mode for f in files if f.isfile()}
    assert modes == {**dict.fromkeys(PROGRAM, 0o755), **dict.fromkeys(DATA | TEXTS, 0o644)}
    assert {f.name.removeprefix("./"): f.linkname for f in files if f.issym()} == LINKS
    assert {f.mode for f in files if f.isdir()} == {0o755}
    assert {(f.uid, f.gid) for f in files} == {(0, 0)}


def test_string_tables_are_the_administrators_to_change():
    conffiles = debian_package.ask("info", "conffiles").decode().split()
    assert set(conffiles) == {f"/{table}" for table in TEXTS}


def test_says_what_it_is_and_needs():
    def field(name):
        return debian_package.ask("field", name).decode().strip()

    assert field("Package") == NAME
    assert field("Maintainer") == "Agent Configure Manager developers <developers@example.org>"
    # Debian 13 has renamed libraries, as their time_t became one of 64 bits.
    needed = {dependency.split()[0].removesuffix("t64") for dependency in field("Depends").split(",")}
    assert {"libc6", "libgtk2.0-0", "libx11-6"} < needed
    assert needed & {"libqt6core6", "libqt5core5a"}
    assert not [name for name in needed if "gui" in name or "widgets" in name]


def test_all_versions_are_the_projects(unpacked):
    version = os.environ["KORV_VERSION"]
    assert debian_package.ask("field", "Version").decode().strip() == version
    assert ElementTree.parse(unpacked / METAINFO).find("releases/release").get("version") == version
    manual = gzip.decompress(debian_package.read(MANUAL)).decode()
    assert f'"Agent Configure Manager {version}"' in manual


def test_program_is_hardened(unpacked):
    command = ["readelf", "--wide", "--dynamic", "--dyn-syms", "--program-headers",
               unpacked / "usr/bin" / NAME]
    report = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    assert re.search(r"\(FLAGS_1\).* NOW PIE$", report, re.MULTILINE)
    assert "GNU_RELRO" in report
    assert "__stack_chk_fail" in report and re.search(r"__\w+_chk@", report)


def test_icon_fits_its_name():
    icon = Image.open(io.BytesIO(debian_package.read(ICON)))
    assert (icon.format, icon.mode, icon.size) == ("PNG", "RGBA", (48, 48))
    assert icon.getpixel((0, 0))[3] == 0, "drawn on nothing"
    assert icon.getpixel((24, 20))[3] == 255


def test_menu_entry_is_valid_and_leads_to_the_program(unpacked):
    finds_nothing("desktop-file-validate", "--no-hints", unpacked / DESKTOP_ENTRY)
    entry = debian_package.menu_entry()
    assert (unpacked / "usr/bin" / entry["Exec"]).is_file()
    assert (unpacked / f"usr/share/icons/hicolor/scalable/apps/{entry['Icon']}.svg").is_file()
    assert {"Settings", "System"} <= set(entry["Categories"].split(";"))


def test_catalogue_entry_is_valid_and_leads_to_the_menu_entry(unpacked):
    report = subprocess.run(["appstreamcli", "validate-tree", "--no-net", "--strict", unpacked],
                            capture_output=True, text=True).stdout
    # Appstream 1.0 has another tag for the developers' name, which those before it do not know.
    assert set(re.findall(r"^ +[A-Z]: \S+ (\S+)", report, re.M)) <= {
        "developer-name-tag-deprecated", "developer-info-missing"}
    entry = ElementTree.parse(unpacked / METAINFO)
    assert entry.findtext("id") == ID
    assert entry.findtext("launchable") == os.path.basename(DESKTOP_ENTRY)
    assert entry.findtext("project_license") == "MIT"


@pytest.mark.parametrize("language, locale", LANGUAGES.items())
def test_menu_and_catalogue_name_the_program_as_its_window_does(unpacked, language, locale):
    table = debian_package.read(f"{TABLES}/{locale}.UTF-8.prop").decode()
    title = re.search("^Title = (.*)$", table, re.MULTILINE)[1]
    menu = debian_package.menu_entry()
    catalogue = ElementTree.parse(unpacked / METAINFO)
    assert menu[f"Name[{language}]"] == title
    assert catalogue.findtext(f"name[@{XML_LANG}='{language}']") == title
    assert (menu[f"Comment[{language}]"]
            == catalogue.findtext(f"summary[@{XML_LANG}='{language}']") != menu["Comment"])


def test_manual_page_has_no_fault_and_can_be_found(unpacked):
    manual = unpacked / MANUAL
    finds_nothing("groff", "-man", "-Tutf8", "-ww", "-z", "-rCHECKSTYLE=3",
                  input=gzip.decompress(manual.read_bytes()))
    found = subprocess.run(["lexgrog", manual], check=True, stdout=subprocess.PIPE).stdout
    assert f'"{NAME} - ' in found.decode()


def test_carries_its_licence():
    def words(text):
        return re.sub(r"^ \.$", "", text, flags=re.MULTILINE).split()

    copyright_file = debian_package.read(f"usr/share/doc/{NAME}/copyright").decode()
    licence = (ROOT / "LICENSE").read_text()
    permission = licence[licence.index("Permission is"):]
    assert words(permission) == words(copyright_file)[-len(words(permission)):]
    assert re.search(r"Copyright \(c\) (.*)", licence)[1] in copyright_file


def test_building_left_nothing_among_the_sources():
    left = {path.name for path in (ROOT / "debian").iterdir()}
    assert left == {"changelog", "control", "copyright", "rules", "source", "tests"}
    assert not list(ROOT.glob("obj-*"))


def test_the_product_lines_own_data_are_built_in_on_demand(tmp_path):
    configure = tmp_path / "dh_auto_configure"
    configure.write_text("#!/bin/sh\nprintf '%s\\n' \"$@\"\n")
    configure.chmod(0o755)
    told = subprocess.run(
        ["make", "--silent", "-f", "debian/rules", "override_dh_auto_configure"], cwd=ROOT, check=True,
        stdout=subprocess.PIPE, text=True,
        env={**os.environ, "PATH": f"{tmp_path}:/usr/bin:/bin", "PRODUCT_DATA": "/our product's/data"})
    assert "-DPRODUCT_DATA=/our product's/data" in told.stdout.splitlines()


def test_two_builds_make_the_same_packages():
    first, again = (debian_package.BUILD / directory for directory in ("package", "package-again"))
    version = os.environ["KORV_VERSION"]
    packages = [path.name for path in first.glob(f"{NAME}*_{version}*") if path.suffix in (".deb", ".xz")]
    assert len(packages) == 3
    for package in packages:
        assert (first / package).read_bytes() == (again / package).read_bytes(), package
