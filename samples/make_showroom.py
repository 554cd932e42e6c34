#!/usr/bin/env python3
"""Writes showroom.gltf, the sample scene of the workbench.

A showroom with a small electric delivery van on a turntable, two stands, a lounge, three cameras and four lights. The
extras hold every type that JSON knows, as a parts database would deliver them, and what is hard to show or to keep:
texts in several scripts, with markup, tabs and line breaks in them, keys with points, numbers too long for their types,
and what has no form as an entry. The extras of the file itself hold what extras of objects cannot say: sets that objects
share, locks, colours, assets, dates and times. Geometry is one box and one cylinder in an embedded buffer, placed and
scaled by the nodes. Two small pictures beside the file are what its sceneplates show.

Usage: make_showroom.py [OUT.gltf]
"""
import base64
import json
import math
import os
import struct
import sys
import zlib

LINE = 110  # what fits into this many columns stands on one line


def box():
    """Unit box around the origin: positions, normals, triangle indices."""
    positions, normals, indices = [], [], []
    for axis in range(3):
        for sign in (1, -1):
            first = len(positions)
            for u, v in ((-1, -1), (1, -1), (1, 1), (-1, 1)):
                corner = [0, 0, 0]
                corner[axis] = 0.5 * sign
                corner[(axis + 1) % 3] = 0.5 * u * sign
                corner[(axis + 2) % 3] = 0.5 * v
                positions.append(corner)
                normals.append([sign if i == axis else 0 for i in range(3)])
            indices += [first, first + 1, first + 2, first, first + 2, first + 3]
    return positions, normals, indices


def cylinder(sides=32):
    """Cylinder along z, one unit across and one unit long, around the origin."""
    positions, normals, indices = [], [], []
    for i in range(sides + 1):
        c, s = math.cos(2 * math.pi * i / sides), math.sin(2 * math.pi * i / sides)
        for z in (-0.5, 0.5):
            positions.append([0.5 * c, 0.5 * s, z])
            normals.append([c, s, 0])
    for i in range(sides):
        a = 2 * i
        indices += [a, a + 2, a + 1, a + 1, a + 2, a + 3]
    for z, normal in ((-0.5, -1), (0.5, 1)):
        first = len(positions)
        positions.append([0, 0, z])
        normals.append([0, 0, normal])
        for i in range(sides + 1):
            c, s = math.cos(2 * math.pi * i / sides), math.sin(2 * math.pi * i / sides)
            positions.append([0.5 * c, 0.5 * s, z])
            normals.append([0, 0, normal])
        for i in range(sides):
            pair = [first + 1 + i, first + 2 + i]
            indices += [first] + (pair if normal > 0 else pair[::-1])
    return positions, normals, indices


def turned(axis, angle):
    """Quaternion of a turn around an axis (unit vector), in radians."""
    return [round(c * math.sin(angle / 2), 7) for c in axis] + [round(math.cos(angle / 2), 7)]


def looking(at, target):
    """Quaternion that turns the view direction, -z, from one point to another and keeps the horizon level."""
    x, y, z = (t - a for a, t in zip(at, target))
    yaw, pitch = math.atan2(-x, -z), math.atan2(y, math.hypot(x, z))
    sy, cy, sp, cp = math.sin(yaw / 2), math.cos(yaw / 2), math.sin(pitch / 2), math.cos(pitch / 2)
    return [round(c, 7) for c in (cy * sp, sy * cp, -sy * sp, cy * cp)]


class Scene:
    """Collects the parts of the file; what a function returns is the index of what it added."""

    def __init__(self):
        self.data = bytearray()
        self.views, self.accessors = [], []
        self.materials, self.meshes, self.cameras, self.lights, self.nodes = [], [], [], [], []
        self.sets, self.assets, self.objects, self.assigned, self.groups = [], [], [], [], []
        self.shapes = {"box": self.shape(box()), "cylinder": self.shape(cylinder())}

    def view(self, data, target):
        self.views.append({"buffer": 0, "byteOffset": len(self.data), "byteLength": len(data), "target": target})
        self.data += data
        self.data += b"\0" * (-len(self.data) % 4)
        return len(self.views) - 1

    def accessor(self, **members):
        self.accessors.append(members)
        return len(self.accessors) - 1

    def vectors(self, values, limits):
        view = self.view(b"".join(struct.pack("<3f", *v) for v in values), 34962)
        stored = [struct.unpack("<3f", struct.pack("<3f", *v)) for v in values]
        extent = {"min": [min(c) for c in zip(*stored)], "max": [max(c) for c in zip(*stored)]} if limits else {}
        return self.accessor(bufferView=view, componentType=5126, count=len(values), type="VEC3", **extent)

    def shape(self, parts):
        positions, normals, indices = parts
        view = self.view(struct.pack("<%dH" % len(indices), *indices), 34963)
        return {
            "attributes": {"POSITION": self.vectors(positions, True), "NORMAL": self.vectors(normals, False)},
            "indices": self.accessor(bufferView=view, componentType=5123, count=len(indices), type="SCALAR"),
        }

    def material(self, name, colour, metallic=0.0, roughness=0.6, extras=None, **more):
        material = {"name": name, "pbrMetallicRoughness": {
            "baseColorFactor": colour, "metallicFactor": metallic, "roughnessFactor": roughness}, **more}
        if extras is not None:
            material["extras"] = extras
        self.materials.append(material)
        return len(self.materials) - 1

    def mesh(self, shape, material):
        name = "%s, %s" % (shape.capitalize(), self.materials[material]["name"])
        for index, mesh in enumerate(self.meshes):
            if mesh["name"] == name:
                return index
        self.meshes.append({"name": name, "primitives": [dict(self.shapes[shape], material=material)]})
        return len(self.meshes) - 1

    def node(self, name, parent=None, extras=None, **members):
        self.nodes.append({"name": name, **members})
        index = len(self.nodes) - 1
        if extras is not None:
            self.nodes[index]["extras"] = extras
        if parent is not None:
            self.nodes[parent].setdefault("children", []).append(index)
        return index

    def part(self, name, parent, shape, material, at, size, extras=None):
        return self.node(name, parent, extras, mesh=self.mesh(shape, material), translation=at, scale=size)

    def set(self, name, color, entries, assigned=(), asset=None, **more):
        """A set that objects share. entries: (key, type, value), for tags (key, "tag"); assigned: places of objects."""
        self.sets.append({"name": name, "color": color, **more, "entries": [self.entry(*e) for e in entries]})
        if assigned:
            self.assigned.append({"set": len(self.sets) - 1, "objects": list(assigned)})
        if asset:
            state, identity = asset
            self.assets.append({"set": len(self.sets) - 1, "state": state, "id": identity})

    @staticmethod
    def entry(key, kind, value=None):
        return {"key": key, "type": kind} if kind == "tag" else {"key": key, "type": kind, "value": value}

    def object(self, **members):
        """Makes a node or a material known to the sets, once; what is returned is its place among those."""
        kind, index = next(iter(members.items()))
        for place, known in enumerate(self.objects):
            if known.get(kind) == index:
                known.update(members)
                return place
        name = (self.nodes if kind == "node" else self.materials)[index]["name"]
        self.objects.append({kind: index, "name": name, **members})
        return len(self.objects) - 1

    def group(self, name, *materials):
        """A group of materials."""
        self.groups.append({"group": name})
        place = sum("group" in item for item in self.groups) - 1
        self.groups += [{"material": m, "name": self.materials[m]["name"], "in": place} for m in materials]

    def plate(self, name, parent, image, placement):
        """An image before or behind the scene, from a file beside this one."""
        self.object(node=self.node(name, parent), sceneplate={"image": image, "placement": placement})

    def own(self, entries, color="#7f8c9b", **more):
        """The set of an object itself, where its extras do not say all of it."""
        return {"name": "", "color": color, **more, "entries": [self.entry(*e) for e in entries]}

    def called(self, *names):
        """Every node of these names."""
        return [self.object(node=i) for i, node in enumerate(self.nodes) if node["name"] in names]

    def annex(self):
        return {"version": 1, "sets": {"format": "metadata-sets", "version": 1, "sets": self.sets},
                "assets": self.assets, "objects": self.objects, "assigned": self.assigned,
                "materials": self.groups}

    def document(self):
        parents = {child for node in self.nodes for child in node.get("children", [])}
        return {
            "asset": {"version": "2.0", "generator": "make_showroom.py"},
            "extensionsUsed": ["KHR_lights_punctual"],
            "extensions": {"KHR_lights_punctual": {"lights": self.lights}},
            "scene": 0,
            "scenes": [{"name": "Showroom", "nodes": [i for i in range(len(self.nodes)) if i not in parents]}],
            "nodes": self.nodes,
            "materials": self.materials,
            "cameras": self.cameras,
            "meshes": self.meshes,
            "accessors": self.accessors,
            "bufferViews": self.views,
            "buffers": [{"byteLength": len(self.data), "uri": "data:application/octet-stream;base64,"
                         + base64.b64encode(self.data).decode()}],
            "extras": {"metadataEditor": self.annex()},
        }


def layout(value, indent=0):
    """JSON text: short values on one line, longer ones spread."""
    line = json.dumps(value, ensure_ascii=False)
    if not isinstance(value, (dict, list)) or not value or len(line) + indent <= LINE:
        return line
    pad = " " * (indent + 2)
    if isinstance(value, dict):
        rows = [pad + json.dumps(k, ensure_ascii=False) + ": " + layout(v, indent + 2) for k, v in value.items()]
        return "{\n" + ",\n".join(rows) + "\n" + " " * indent + "}"
    return "[\n" + ",\n".join(pad + layout(v, indent + 2) for v in value) + "\n" + " " * indent + "]"


def build():
    s = Scene()
    concrete = s.material("Polished Concrete", [0.62, 0.62, 0.6, 1], 0, 0.35, {
        "supplier": "Stonefield Floors", "area m2": 144.0, "slip class": "R9", "maintenance": ["sweep", "wax", "seal"]})
    plaster = s.material("Plaster White", [0.93, 0.92, 0.9, 1], 0, 0.9, {"supplier": "Northwall", "washable": True})
    paint = s.material("Paint Petrol", [0.02, 0.32, 0.38, 1], 0.2, 0.3, {
        "code": "PT-417", "sRGB": "#055262", "layers": 3,
        "colour name": {"fr": "bleu pétrole", "el": "μπλε πετρόλ", "ja": "ペトロールブルー", "ar": "أزرق بترولي"},
        "thickness": {"primer": 0.02, "base": 0.015, "clear": 0.04, "unit": "mm"},
        "solvent-free": True, "price per litre": 38.5, "released": "2023-11-06"})
    rubber = s.material("Rubber", [0.05, 0.05, 0.05, 1], 0, 0.95, {
        "shore": 64, "recycled": None, "friction": [0.9, 0.55, None], "temperature °C": {"min": -45, "max": 110}})
    alloy = s.material("Brushed Alloy", [0.75, 0.76, 0.78, 1], 1, 0.4, {
        "alloy": "EN AW-6060", "density": 2.7, "expansion 1/K": 2.34e-05, "elements": {"Al": 98.5, "Mg": 0.5, "Si": 0.45},
        "supplier": "Tarn Metals", "certificates": ["3.1", "RoHS"]})
    glass = s.material("Glass Tinted", [0.2, 0.28, 0.3, 0.45], 0, 0.05, {"transmission": 0.45, "e-mark": 43},
                       alphaMode="BLEND")
    s.material("Fabric Graphite", [0.2, 0.2, 0.22, 1], 0, 1, {
        "weight": 320, "flammability": "passed", "colours": ["graphite", "sand", "moss"], "discontinued": None})
    fabric = len(s.materials) - 1
    screen = s.material("Screen", [0.1, 0.12, 0.2, 1], 0, 0.2, emissiveFactor=[0.25, 0.4, 0.7])
    oak = s.material("Oak", [0.55, 0.39, 0.22, 1], 0, 0.7, {
        "certified": True, "origin": "Alsace", "board width": 180, "defects": [], "remark": ""})

    room = s.node("Showroom", extras={
        "site": "Hall 3", "opened": "2024-03-18", "open from": "09:30", "capacity": 60, "accessible": True,
        "visitors": -1, "rooms": [["Hall 3", 144], ["Lounge", 38]], "catering": {},
        "contact": {"name": "Reception", "phone": "+00 555 0134", "languages": ["en", "de", "fr"]}})
    shell = s.node("Building", room, {"fire section": "B2", "inspected": None})
    s.part("Floor", shell, "box", concrete, [0, -0.05, 0], [12, 0.1, 12], {"cleaned": "2024-05-02T06:15:00"})
    s.part("Back Wall", shell, "box", plaster, [0, 1.75, -6.05], [12, 3.5, 0.1])
    s.part("Side Wall", shell, "box", plaster, [-6.05, 1.75, 0], [0.1, 3.5, 12])
    s.part("Lettering", shell, "box", alloy, [0, 2.7, -5.97], [4.2, 0.45, 0.06], {
        "text": "Small vans, <b>big</b> days", "typeface": "Grotesk & Co. \"Wide\"", "lines": "Small vans,\n\tbig days"})

    podium = s.node("Turntable", room, {
        "part no": "TT-2200", "diameter": 5.2, "rpm": 0.5, "max load kg": 3500, "motor": {"power": 0.75, "volts": 400}})
    table = s.part("Table", podium, "cylinder", oak, [0, 0.1, 0], [5.2, 5.2, 0.2])
    s.nodes[table]["rotation"] = turned([1, 0, 0], math.pi / 2)

    van = s.node("Delivery Van", podium, {
        "model": "Sparrow E3", "part no": "V-300-0001", "serial": 4006381333931, "list price": 32900.0, "seats": 2,
        "first shown": "2024-03-18T10:00:00", "electric": True, "range km": 265, "prototype": None,
        "markets": ["DE", "FR", "NL"], "model years": [2023, 2024, 2025],
        "dimensions": {"length": 3.9, "width": 1.68, "height": 1.98, "wheelbase": 2.42},
        "approval": {"number": "e0*2018/858*00001", "valid": {"from": "2023-09-01", "until": "2028-08-31"}},
        "changes": [{"rev": "A", "note": "first build"}, {"rev": "B", "note": "new door seal"}],
        "description": "The Sparrow E3 is the smallest van of the family. It was drawn around two euro pallets and a "
        "standing driver: the floor is flat from the tailgate to the bulkhead, the sliding doors open from a step "
        "without handles, and everything that wears out can be exchanged within a quarter of an hour. The vehicle in "
        "the showroom is the third prototype; its paint, its seats and its battery are those of the series, its door "
        "handles and the lettering on the left side are not.\n\nPlease do not lean on the mirrors."},
        translation=[0, 0.2, 0], rotation=turned([0, 1, 0], 0.6))
    body = s.node("Body", van, {"part no": "B-310-0100", "weight kg": 268.4, "released": True})
    s.part("Chassis", body, "box", alloy, [0, 0.4, 0], [3.7, 0.16, 1.5], {"part no": "B-310-0101", "welds": 184,
            "tolerance.x": 0.2, "tolerance.y": 0.2, "mixed": ["a", 1, 2.5, True, None]})
    s.part("Cabin", body, "box", paint, [1.25, 0.95, 0], [1.2, 0.95, 1.62], {"part no": "B-310-0110"})
    s.part("Windscreen", body, "box", glass, [1.72, 1.55, 0], [0.26, 0.55, 1.5], {"part no": "G-120-0007", "heated": True})
    s.part("Cargo Box", body, "box", paint, [-0.65, 1.23, 0], [2.6, 1.5, 1.68], {
        "part no": "B-310-0120", "volume m3": 5.1, "payload kg": 740, "lining": ["floor", "left", "right"]})
    for side, z in (("Left", -0.85), ("Right", 0.85)):
        s.part("Door", body, "box", paint, [1.2, 0.95, z], [0.95, 0.9, 0.05], {
            "part no": "D-210-000%d" % (1 if side == "Left" else 2), "side": side.lower(), "lock": None})
    chassis = s.node("Running Gear", van, {"part no": "C-400-0001", "service interval km": 30000})
    for name, x, z in (("front left", 1.2, -0.8), ("front right", 1.2, 0.8), ("rear left", -1.2, -0.8),
                       ("rear right", -1.2, 0.8)):
        wheel = s.part("Wheel", chassis, "cylinder", rubber, [x, 0.32, z], [0.64, 0.64, 0.2], {
            "part no": "W-165-70-14", "position": name, "pressure bar": 2.6, "tread mm": 7.5, "load index": 88})
        s.part("Rim", wheel, "cylinder", alloy, [0, 0, 0], [0.62, 0.62, 1.04], {"bolts": 5, "torque Nm": 110})
    battery = s.node("Battery Pack", van, {
        "part no": "E-600-0002", "capacity kWh": 44.2, "cells": 192, "chemistry": "LFP", "high voltage": None,
        "limits": {"charge": {"kW": 80, "°C": [0, 45]}, "discharge": {"kW": 100, "°C": [-20, 55]}}})
    for i in range(3):
        s.part("Module", battery, "box", alloy, [-0.9 + 0.9 * i, 0.52, 0], [0.8, 0.08, 1.2], {
            "part no": "E-610-0010", "slot": i + 1, "health": round(0.991 - 0.004 * i, 3), "date of test": "2024-01-1%d" % i})
    s.part("Driver Seat", van, "box", fabric, [0.95, 0.75, -0.38], [0.5, 0.5, 0.5], {"part no": "S-700-0001", "heated": False})
    s.part("Passenger Seat", van, "box", fabric, [0.95, 0.75, 0.38], [0.5, 0.5, 0.5], {"part no": "S-700-0002", "note": ""})

    info = s.node("Info Stand", room, {"part no": "ST-100", "languages": ["en", "de"], "powered": True},
                  translation=[3.6, 0, 1.6])
    s.part("Foot", info, "box", oak, [0, 0.5, 0], [0.4, 1, 0.3])
    s.part("Screen", info, "box", screen, [0, 1.2, 0], [0.9, 0.55, 0.05], {
        "resolution": [1920, 1080], "content": {"loop": "sparrow-tour.mp4", "length s": 95.5}, "touch": False})
    swatches = s.node("Material Stand", room, {"part no": "ST-200", "updated": "2024-04-30"}, translation=[-3.8, 0, 2.2])
    s.part("Foot", swatches, "box", oak, [0, 0.4, 0], [1.4, 0.8, 0.4])
    for i, (name, material) in enumerate((("Swatch Petrol", paint), ("Swatch Alloy", alloy), ("Swatch Fabric", fabric))):
        s.part(name, swatches, "box", material, [-0.45 + 0.45 * i, 0.83, 0], [0.35, 0.06, 0.3], {"order": i + 1})

    lounge = s.node("Lounge", room, {"seats": 4, "reserved": None}, translation=[-3.7, 0, -3.4])
    s.part("Rug", lounge, "box", fabric, [0, 0.005, 0], [3.2, 0.01, 2.8])
    coffee = s.part("Table", lounge, "cylinder", oak, [0, 0.42, 0], [0.9, 0.9, 0.04], {
        "part no": "F-020", "diameter": 0.9, "remark": "the same name as the turntable's top, on purpose"})
    s.nodes[coffee]["rotation"] = turned([1, 0, 0], math.pi / 2)
    s.part("Foot", lounge, "box", alloy, [0, 0.2, 0], [0.08, 0.4, 0.08])
    for i in range(4):
        angle = math.pi / 4 + i * math.pi / 2
        chair = s.node("Chair", lounge, {"part no": "F-010", "place": i + 1}, rotation=turned([0, 1, 0], angle),
                       translation=[round(1.05 * math.sin(angle), 4), 0, round(1.05 * math.cos(angle), 4)])
        s.part("Seat", chair, "box", fabric, [0, 0.43, 0], [0.5, 0.08, 0.5])
        s.part("Back", chair, "box", fabric, [0, 0.72, 0.23], [0.5, 0.5, 0.06])
        s.part("Foot", chair, "box", alloy, [0, 0.2, 0], [0.1, 0.4, 0.1])
    lamp = s.node("Floor Lamp", lounge, {"part no": "L-095", "bulb": "E27"}, translation=[-1.5, 0, -1.6])
    s.part("Foot", lamp, "box", oak, [0, 0.02, 0], [0.32, 0.04, 0.32])
    s.part("Pole", lamp, "box", alloy, [0, 0.85, 0], [0.03, 1.65, 0.03])
    shade = s.part("Shade", lamp, "cylinder", screen, [0, 1.7, 0], [0.36, 0.36, 0.3])
    s.nodes[shade]["rotation"] = turned([1, 0, 0], math.pi / 2)

    def camera(name, yfov, at, target, extras):
        s.cameras.append({"name": name, "type": "perspective", "perspective": {
            "yfov": yfov, "znear": 0.05, "zfar": 100, "aspectRatio": 1.777778}})
        s.node(name, room, extras, camera=len(s.cameras) - 1, translation=at, rotation=looking(at, target))

    def plan(name, half, at, target, extras):
        s.cameras.append({"name": name, "type": "orthographic", "orthographic": {
            "xmag": half, "ymag": half, "znear": 0.05, "zfar": 100}})
        s.node(name, room, extras, camera=len(s.cameras) - 1, translation=at, rotation=looking(at, target))

    camera("Overview", 0.85, [5.5, 3.2, 5.6], [0, 0.8, 0], {"purpose": "catalogue cover", "approved": True})
    plan("Plan View", 7, [0, 8, 0.01], [0, 0, 0], {"purpose": "floor plan", "scale": "1:50"})
    camera("Visitor", 1.05, [0, 1.7, 5.4], [0, 1.1, 0], {"eye height": 1.7})

    def light(name, kind, colour, intensity, at, target, extras, **more):
        s.lights.append({"name": name, "type": kind, "color": colour, "intensity": intensity, **more})
        s.node(name, room, extras, translation=at, rotation=looking(at, target),
               extensions={"KHR_lights_punctual": {"light": len(s.lights) - 1}})

    light("Daylight", "directional", [1, 0.97, 0.92], 2.5, [4, 6, 5], [0, 0, 0], {"simulates": "noon, May"})
    light("Turntable Spot", "spot", [1, 0.95, 0.85], 900, [0, 3.4, 0], [0, 0, 0], {
        "part no": "L-090-3000", "kelvin": 3000, "dimmable": True, "hours": 1204.5},
        range=8, spot={"innerConeAngle": 0.5, "outerConeAngle": 0.9})
    light("Stand Lamp", "point", [1, 0.9, 0.75], 120, [3.6, 2.2, 1.9], [3.6, 0, 1.6], {"kelvin": 2700, "emergency": None},
          range=4)
    light("Floor Lamp", "point", [1, 0.85, 0.65], 60, [-5.2, 1.6, -5], [-3.7, 0, -3.4], {"kelvin": 2700}, range=4)
    s.plate("Backdrop", room, "showroom-backdrop.png", "behind")
    s.plate("Corner Mark", room, "showroom-mark.png", "inFront")
    s.group("Building", concrete, plaster)
    s.group("Vehicle", paint, rubber, alloy, glass)
    s.group("Furniture", fabric, oak)
    s.groups.append({"material": screen, "name": s.materials[screen]["name"]})
    add_sets(s, paint)
    return s.document()


def add_sets(s, paint):
    """What the extras of the objects cannot say."""
    s.object(node=s.objects[s.called("Material Stand")[0]]["node"], own=s.own([
        ("part no", "string", "ST-200"), ("updated", "date", "2024-04-30")], "#e09a3e"))
    s.object(node=s.objects[s.called("Turntable")[0]]["node"], locked=True)
    s.object(node=s.objects[s.called("Passenger Seat")[0]]["node"], own=s.own([
        ("part no", "string", "S-700-0002"), ("note", "string", "")], locked=True))

    s.set("Release 2024", "#3d8bd4", [
        ("number", "string", "R-2024-07"), ("order", "number", "9007199254740993"), ("revision", "integer", 3),
        ("budget", "float", 12500.5), ("approved", "boolean", True), ("handover", "time", "09:30:00"),
        ("due", "date", "2024-07-01"), ("frozen", "dateTime", "2024-06-14T18:00:00"),
        ("reviewers", "list", ["Ada", "Grace", "Zoë"]), ("confidential", "tag")],
        s.called("Delivery Van", "Body", "Battery Pack", "Backdrop"))
    s.set("Wearing Part", "#4caf6e", [
        ("interval", "integer", 12), ("last visit", "date", "2024-05-02"), ("check from", "time", "08:15:00"),
        ("check", "list", ["brakes", "tyres", "door seals"]), ("wear", "float", 0.125), ("overdue", "boolean", False)],
        s.called("Wheel", "Door"))
    s.set("Furniture", "#b45ad2", [
        ("collection", "string", "Aare"), ("reorder", "tag"), ("care", "string", "Wipe with a damp cloth.\nNo <solvents>!")],
        s.called("Chair", "Table", "Floor Lamp"))
    s.set("Supplier: Tarn Metals", "#e09a3e", [
        ("contact", "string", "Tarn Metals, <sales>\n+00 555 0199"), ("lead time", "integer", -1),
        ("opens", "time", "07:00:00.500"), ("certified", "tag")],
        s.called("Chassis", "Rim", "Pole"), locked=True)
    s.set("Sparrow E3 Data Sheet", "#2a9d8f", [
        ("edition", "string", "2024-03"), ("pages", "integer", 4), ("languages", "list", ["en", "de", "fr"]),
        ("print", "tag")],
        s.called("Delivery Van"), ("atRest", "sparrow-e3-data-sheet"))
    s.set("Paint Petrol Recipe", "#055262", [
        ("mixed", "date", "2024-02-29"), ("parts", "list", [62, 30.5, 7.5]), ("batch", "string", "PT-417/3")],
        [s.object(material=paint)] + s.called("Swatch Petrol"), ("edited", "paint-petrol"))
    s.set("Terms of the loan of everything that stands in the lounge until the end of the spring exhibition, with what has "
          "to be said to the insurance", "#c8553d", [
              ("clause that names who is liable for what between the delivery and the first day of the exhibition", "string",
               "The lender delivers; the exhibitor unloads, and is liable from the moment at which the last piece stands in "
               "the hall. What is scratched before that is the carrier's, what is scratched after that is the exhibitor's, "
               "and what is scratched by visitors is the insurance's, less 250 for each piece."),
              ("insured", "boolean", True)],
          s.called("Lounge", "Chair"))
    s.set("For the next fair", "#7f8c9b", [("polish", "tag"), ("bring along", "tag")])


def picture(width, height, pixel):
    """PNG file of what pixel(x, y), both from 0 to 1, answers: red, green, blue, opacity."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    rows = b"".join(b"\0" + bytes(round(255 * c) for x in range(width) for c in pixel(x / width, y / height))
                    for y in range(height))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">2I5B", width, height, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def dusk(x, y):
    """A sky that gets lighter towards the horizon, above a dark plain."""
    horizon = 0.68 + 0.02 * math.sin(9 * x) + 0.012 * math.sin(23 * x + 1)
    if y > horizon:
        return 0.13, 0.17, 0.2, 1
    light = (y / horizon) ** 2
    return 0.2 + 0.55 * light, 0.3 + 0.4 * light, 0.42 + 0.22 * light, 1


def mark(x, y):
    """A ring in the lower right corner; nothing elsewhere."""
    distance = math.hypot((x - 0.92) * 16 / 9, y - 0.86)
    return 0.02, 0.32, 0.38, 0.6 * max(0, min(1, 3 - abs(distance - 0.06) * 200))


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    target = sys.argv[1] if len(sys.argv) > 1 else os.path.join(folder, "showroom.gltf")
    for name, pixel in (("backdrop", dusk), ("mark", mark)):
        with open(os.path.join(os.path.dirname(target) or ".", "showroom-%s.png" % name), "wb") as file:
            file.write(picture(320, 180, pixel))
    with open(target, "w", encoding="utf-8", newline="\n") as file:
        file.write(layout(build()) + "\n")


if __name__ == "__main__":
    main()
