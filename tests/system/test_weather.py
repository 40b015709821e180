"""The weather file of the host, and what the agent is told of it."""
import datetime
import json
import os
import subprocess
import unittest

from support.login_manager import HELD, LoginManager
from support.recording_agent import RecordingAgent
from support.saved_files import SavedFiles
from support.system_test import SystemTest
from support.values import REFERENCE_DATE
from support.waiting import wait_for_end


def weather(location, **day):
    """Of one day."""
    return {"location": location,
            "forecast": [{"date": "2026-11-23T09:00:00Z", "high": 21, "low": -12, **day}]}


def sent(location, **day):
    """The same as the bus carries it."""
    date = (datetime.datetime(2026, 11, 23, 9) - REFERENCE_DATE).total_seconds()
    return {"location": location,
            "forecast": [{"date": (date,), "high": 21, "low": -12, **day}]}


class AWeatherFile(SystemTest):
    def setUp(self):
        super().setUp()
        self.folder = self.session.folder / "files"
        self.folder.mkdir()
        self.file = self.folder / "weather.json"
        self.configuration = self.folder / "config.toml"
        self.configure("weather.json")
        self.errors_path = self.session.folder / "host-errors"

    def configure(self, path):
        self.replace(self.configuration, f'[weather]\nfile = "{path}"\n' if path else "")

    @staticmethod
    def replace(path, text):
        """As careful programs do it: beside its place, then into it."""
        beside = path.with_name(path.name + ".new")
        beside.write_text(text)
        beside.rename(path)

    def write(self, record):
        self.replace(self.file, json.dumps(record))

    def start_host(self):
        with open(self.errors_path, "w", encoding="utf-8") as errors:
            self.host = self.session.start(
                [os.environ["PLENZOHOST"], "--config", str(self.configuration)],
                stdout=subprocess.DEVNULL, stderr=errors)
        self.addCleanup(self._end_host)

    def _end_host(self):
        self.host.terminate()
        self.assertEqual(wait_for_end(self.host), 0)

    def start_with_recording_agent(self):
        self.agent = RecordingAgent(self.session.connect())
        self.start_host()

    def wait_for_records(self, *records):
        self.wait_until(lambda: len(self.agent.arguments_of("WeatherUpdated")) >= len(records),
                        lambda: f"{len(records)} records; {self.errors()}")
        self.assertEqual(self.agent.arguments_of("WeatherUpdated"), list(records))

    def errors(self):
        """What the host says of the weather."""
        return [line for line in self.errors_path.read_text().splitlines() if "weather" in line]

    def test_is_sent_when_an_agent_is_there_and_when_one_announces_itself(self):
        self.write(weather("Oslo", text="Sunny"))
        self.start_with_recording_agent()
        self.wait_for_records(sent("Oslo", text="Sunny"))
        self.agent.announce()
        self.wait_for_records(sent("Oslo", text="Sunny"), sent("Oslo", text="Sunny"))
        self.assertEqual(self.agent.operations()[-5:],
                         ["Version", "PrefsUpdated", "SourceListUpdated", "AlarmsUpdated",
                          "WeatherUpdated"])

    def test_is_sent_again_when_it_has_changed(self):
        self.write(weather("Oslo"))
        self.start_with_recording_agent()
        self.wait_for_records(sent("Oslo"))
        self.write(weather("Oslo"))
        self.write(weather("Rome"))
        self.wait_for_records(sent("Oslo"), sent("Rome"))
        with open(self.file, "w", encoding="utf-8") as file:
            file.write(json.dumps(weather("Bonn"))[:20])
            file.flush()
            file.seek(0)
            file.write(json.dumps(weather("Bonn")))
        self.wait_for_records(sent("Oslo"), sent("Rome"), sent("Bonn"))
        self.assertEqual(self.errors(), [])

    def test_that_is_damaged_costs_nothing(self):
        self.write(weather("Oslo"))
        self.start_with_recording_agent()
        self.wait_for_records(sent("Oslo"))
        self.file.write_text('{"location":\n "Ro')
        self.wait_until(self.errors, "the problem")
        self.assertIn(f"{self.file}:2:5: is no JSON", self.errors()[0])
        self.write(weather("Rome"))
        self.wait_for_records(sent("Oslo"), sent("Rome"))
        self.assertEqual(len(self.errors()), 1)

    def test_that_goes_takes_the_weather_with_it(self):
        self.write(weather("Oslo"))
        self.start_with_recording_agent()
        self.wait_for_records(sent("Oslo"))
        self.file.unlink()
        self.wait_for_records(sent("Oslo"), {})
        self.write(weather("Rome"))
        self.wait_for_records(sent("Oslo"), {}, sent("Rome"))

    def test_is_noticed_in_a_folder_that_comes_later(self):
        self.configure("cache/new/weather.json")
        self.start_with_recording_agent()
        self.wait_for_records({})
        (self.folder / "cache" / "new").mkdir(parents=True)
        self.file = self.folder / "cache" / "new" / "weather.json"
        self.write(weather("Oslo"))
        self.wait_for_records({}, sent("Oslo"))

    def test_may_be_a_link_whose_target_changes(self):
        (self.folder / "elsewhere").mkdir()
        target = self.folder / "elsewhere" / "w.json"
        self.replace(target, json.dumps(weather("Oslo")))
        self.file.symlink_to(target)
        self.start_with_recording_agent()
        self.wait_for_records(sent("Oslo"))
        self.replace(target, json.dumps(weather("Rome")))
        self.wait_for_records(sent("Oslo"), sent("Rome"))

    def test_is_that_of_the_configuration_as_it_is_now(self):
        self.write(weather("Oslo"))
        self.start_with_recording_agent()
        self.wait_for_records(sent("Oslo"))
        self.replace(self.folder / "other.json", json.dumps(weather("Rome")))
        self.configure("other.json")
        self.wait_for_records(sent("Oslo"), sent("Rome"))
        self.configure(None)
        self.wait_for_records(sent("Oslo"), sent("Rome"), {})

    def test_reaches_the_agent_that_keeps_it(self):
        manager = LoginManager(self.session, self.link.connection)
        self.addCleanup(manager.vanish)
        self.start_agent()
        manager.wait_for_inhibitors(HELD)
        self.write(weather("Oslo", icon="rain"))
        (self.folder / "a.ics").write_text("BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:t\nEND:VCALENDAR\n")
        self.start_host()
        manager.announce("PrepareForShutdown", True)
        # It is saved again with whatever comes while the machine shuts down.
        files = SavedFiles(self.session)
        self.wait_until(files.path("Weather.plist").exists, "the weather at the agent")
        saved = files.read("Weather.plist")
        self.assertEqual(saved, {"location": "Oslo", "forecast": [
            {"date": datetime.datetime(2026, 11, 23, 9), "high": 21, "low": -12, "icon": "rain"}]})


if __name__ == "__main__":
    unittest.main()
