#!/usr/bin/env python3
"""Prints src/exchange/alphabets.inc: the alphabets that \\PA\\ to \\PI\\ in exchange strings choose."""

print("// Made by tools/generate_alphabets.py: ISO 8859 parts 1 to 9, characters 0xA0 to 0xFF; 0 for none.")
for part in range(1, 10):
    row = [bytes([byte]).decode(f"iso8859-{part}", "replace") for byte in range(0xA0, 0x100)]
    codes = [0 if character == "\ufffd" else ord(character) for character in row]
    print("{")
    for i in range(0, 96, 12):
        print("    " + ", ".join(f"0x{code:04X}" for code in codes[i:i + 12]) + ",")
    print("},")
