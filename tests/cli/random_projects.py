"""Small projects at random, whose answers change with orders, starters and limits."""
import random


def motor(dice):
    hp = dice.choice((10, 25, 40, 60, 100, 150, 200, 300))
    return {"LoadType": "Motor", "name": f"Motor {dice.randrange(1000)}", "Quantity": dice.choice((1, 1, 1, 2)), "HP": hp,
            "CodeLetter": "G", "StartingMethod": dice.choice((1, 1, 5)), "StartsLoaded": dice.random() < 0.7,
            "StartingAppPower": hp * dice.choice((1900, 3500, 5900)), "StartingPF": dice.choice((0.2, 0.3, 0.42))}


def any_load(dice):
    kind = dice.randrange(4)
    if kind == 0:
        return {"LoadType": "UPS", "name": f"UPS {dice.randrange(1000)}", "Family": 1, "InputType": dice.choice((1, 2)),
                "OutputRating": dice.choice((20, 60, 160)) * 1000, "Loading": dice.choice((60, 90))}
    if kind == 1:
        return {"LoadType": "Miscellaneous", "name": f"Heating {dice.randrange(1000)}",
                "RunningRealPower": dice.randrange(2000, 90000), "RunningPowerFactor": dice.choice((0.8, 0.95, 1))}
    return motor(dice)


def project(seed, loads=6, steps=4):
    dice = random.Random(seed)
    groups = [[] for _ in range(steps)]
    for load in range(loads):
        groups[load if load == 0 else dice.randrange(steps)].append(any_load(dice))
    return {"Format": "genvara-project", "Version": 1, "Project": {"ProjName": f"Random {seed}"},
            "PowerSystem": {"Voltage": 480, "ConnectCode": 1, "Freq": 60, "Fuel": dice.choice((1, 1, 2)),
                            "GensetsInParallel": dice.choice((1, 1, 2)), "Altitude": dice.choice((0, 1500)),
                            "RiseDutyCode": dice.choice((2, 3)), "MaxVoltageDip": dice.choice((12, 20, 30)),
                            "MaxFreqDipEnabled": dice.random() < 0.5, "MaxFreqDip": dice.choice((6, 10)),
                            "MaxHarmonicsEnabled": dice.random() < 0.4, "MaxHarmonics": dice.choice((5, 8, 12))},
            "LoadProfile": [{"Description": f"step {number}", "MaxVoltageDipOverride": dice.choice((10, 15, 25, 35)),
                             "Loads": group} for number, group in enumerate(groups, 1) if group]}
