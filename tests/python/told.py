"""What the console says as JSON, and the same from objects of the module."""
import json
import subprocess

from conftest import CLI

SET = {"ModelNum": "model_num", "AltNum": "alt_num", "EngineNum": "engine_num", "FuelType": "fuel_type",
       "NominalRating": "nominal_rating", "DeratedRating": "derated_rating", "StartKVA35": "start_kva35",
       "VoltageDips": "voltage_dips", "FreqDips": "freq_dips", "StepVTHD_A": "step_vthd_a", "StepVTHD_B": "step_vthd_b",
       "StepVTHD_C": "step_vthd_c", "MaxStepVoltDip": "max_step_volt_dip", "MaxStepFreqDip": "max_step_freq_dip",
       "MaxStepVTHD": "max_step_vthd", "FreqDipAvail": "freq_dip_avail"}


def told_by(*arguments):
    done = subprocess.run([CLI, *map(str, arguments)], capture_output=True, text=True, timeout=600)
    return [json.loads(line) for line in done.stdout.splitlines()]


def set_of(chosen):
    return chosen and {name: getattr(chosen, attribute) for name, attribute in SET.items()}


def tightest_of(tightest):
    return tightest and {"Name": tightest.name, "StepNumber": tightest.step_number, "Margin": tightest.margin}
