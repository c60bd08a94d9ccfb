"""The description of the interface for programs, and whether answers are as it says."""

import json
import re

from jsonschema import Draft202012Validator, RefResolver

ROOT = "/api/v1"
METHODS = ("get", "put", "post", "delete")


class Description:
  def __init__(self, text):
    self.document = json.loads(text)
    self.resolver = RefResolver("", self.document)

  def operations(self):
    """Method in capitals, path below the root, what is said of it."""
    return [(method.upper(), path, operation)
            for path, item in self.document["paths"].items()
            for method, operation in item.items() if method in METHODS]

  def resolved(self, part):
    while "$ref" in part:
      part = self.resolver.resolve(part["$ref"])[1]
    return part

  def fault(self, method, path, status, headers, body):
    """What is wrong with an answer to this question, whose path stands in the description; "" for
    nothing. Names of headers are in lower case."""
    operation = self.document["paths"][path][method.lower()]
    if str(status) not in operation["responses"]:
      return f"{method} {path} is answered with {status}, which is not described: {body[:200]}"
    response = self.resolved(operation["responses"][str(status)])
    content = response.get("content", {})
    kind = headers.get("content-type", "").split(";")[0]
    if kind not in content:
      return f"{method} {path} {status} comes as {kind!r} in place of {list(content)}"
    for name in response.get("headers", {}):
      if name.lower() not in headers:
        return f"{method} {path} {status} has no {name}"
    if not kind.endswith("json"):
      return ""
    validator = Draft202012Validator(content[kind]["schema"], resolver=self.resolver)
    faults = [f"{'/'.join(map(str, fault.path))}: {fault.message}"
              for fault in validator.iter_errors(json.loads(body))]
    return f"{method} {path} {status}: {'; '.join(faults[:3])[:600]}" if faults else ""

  def event_fault(self, name, data):
    """The same of an event of the stream."""
    schemas = {"device": "Device", "command": "Command", "interface": "Interface"}
    if name not in schemas:
      return "" if name in self.document["paths"]["/stream"]["get"]["description"] else name
    validator = Draft202012Validator({"$ref": f"#/components/schemas/{schemas[name]}"},
                                     resolver=self.resolver)
    return "; ".join(fault.message for fault in validator.iter_errors(json.loads(data)))

  def names(self, path):
    return re.findall(r"{(\w+)}", path)
